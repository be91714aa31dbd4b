#include "apps/vexma/AccessCall.h"

#include "VexAction.h"

namespace vex {

namespace {

constexpr std::size_t verdictPlace = 1; // among what the action appends

} // namespace

bool askForAccess(Workplace& workplace, VEX_HANDLE object, long mode, AccessAnswer& answer) {
    ActionValues values;
    VexParams in;
    in.AddParam(values.Long(0));
    in.AddParam(values.String(workplace.modelPath()));
    in.AddParam(values.Handle(object));
    in.AddParam(values.Long(mode));
    answer.outcome = workplace.Call(values.Long(VexAction::AccessibilityRequest), in);
    if (!isHandled(answer.outcome) || answer.outcome.appended.size() <= verdictPlace) {
        return false;
    }
    answer.verdict = static_cast<long>(answer.outcome.appended[verdictPlace]);
    return true;
}

} // namespace vex
