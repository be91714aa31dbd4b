#include "apps/vexma/AccessOfAll.h"

#include <algorithm>

namespace vex {

AccessOfAll askForAccessOfAll(Workplace& workplace, Progress& progress) {
    constexpr std::size_t objectsOfACall = 1'024; // the progress is told in between
    Model const& model = workplace.model();
    AccessOfAll all{{.kind = CallEnd::Kind::Answered}, {}};
    while (all.verdicts.size() < model.elementCount()) {
        std::size_t const end =
            std::min(all.verdicts.size() + objectsOfACall, model.elementCount());
        Vex_Handle_Collection objects;
        for (std::size_t number = all.verdicts.size(); number < end; ++number) {
            objects.push_back(model.getElement(number));
        }
        AccessAnswer answer = workplace.access(objects, 0);
        if (!answer.end.isAnswered()) {
            return {std::move(answer.end), {}};
        }
        all.verdicts.insert(all.verdicts.end(), answer.verdicts.begin(), answer.verdicts.end());
        progress.report(all.verdicts.size(), model.elementCount());
    }
    return all;
}

} // namespace vex
