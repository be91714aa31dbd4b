#include "host/service/CallEnd.h"

namespace vex {

CallFailure describeFailure(VexException const& raised) {
    CallFailure failure;
    failure.id = raised.GetId();
    failure.source = raised.GetLocation().source;
    failure.line = raised.GetLocation().line;
    failure.function = raised.GetFunction();
    for (VexMessage const& message : raised.GetMessages()) {
        for (KRLMessageParm const& parameter : message.GetComponents().GetParameters()) {
            failure.parameters.push_back(parameter.GetText().toUtf8());
        }
    }
    failure.text = raised.what();
    return failure;
}

} // namespace vex
