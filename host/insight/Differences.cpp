#include "host/insight/Differences.h"

#include "I18NHash.h"
#include "host/store/image/Budget.h"

#include <functional>
#include <unordered_set>

namespace vex {

namespace {

using Change = ComparedObject::Change;

void count(ComparedObject const& object, Differences& told) {
    told.appear += object.change == Change::Appears ? 1 : 0;
    told.disappear += object.change == Change::Disappears ? 1 : 0;
    told.change += object.change == Change::Changes ? 1 : 0;
    told.renamed += object.isRenamed() ? 1 : 0;
}

ObjectLabel labelIn(ComparedSide const& side, VEX_HANDLE object) {
    return labelOf(side.model, object, side.locale);
}

} // namespace

Differences tellDifferences(ComparedSide const& before, ComparedSide const& after) {
    Differences told;
    std::unordered_set<std::string, I18NTextHasher, std::equal_to<>> known;
    for (ComparedObject const& object : compareTrees(before, after)) {
        bool const byFirst = object.change == Change::Disappears || !object.after.IsNotNull();
        ToldChange& entry = told.objects.emplace_back();
        entry.change = object.change;
        entry.object = byFirst ? labelIn(before, object.before) : labelIn(after, object.after);
        entry.before = object.presenceBefore;
        entry.after = object.presenceAfter;
        entry.isRenamed = object.isRenamed();
        for (PropertyChange const& change : object.properties) {
            entry.properties.push_back(
                {change.property.toUtf8(), change.before.toUtf8(), change.after.toUtf8()});
        }
        entry.container = object.container;
        Budget::chargeBytes(entry.object.byteCount());
        count(object, told);
    }
    for (ComparedSide const* const side : {&before, &after}) {
        for (ObjectLabel& label :
             labelsOf(side->model, notGoneIntoAgain(side->trees), side->locale)) {
            bool const isKnown = !known.insert(label.key()).second;
            if (!isKnown) {
                told.notGoneIntoAgain.push_back(std::move(label));
            }
        }
    }
    return told;
}

} // namespace vex
