#include "host/insight/Sight.h"

#include "host/insight/ObjectReference.h"

#include <algorithm>

namespace vex {

char const* codeOf(Sight sight) {
    constexpr char const* codes[] = {"yes", "past-views", "no", "refused", "unknown"};
    return codes[static_cast<std::size_t>(sight)];
}

std::vector<Sight> sightOfAll(Model const& model, AnsweredTree const& trees,
                              std::vector<bool> const& accessible) {
    std::vector<bool> isWritten(model.elementCount(), false);
    for (AnsweredObject const& entry : trees) {
        if (entry.fate == ObjectFate::Written) {
            isWritten[numberOf(model, entry.object)] = true;
        }
    }
    std::vector<Sight> sights;
    sights.reserve(accessible.size());
    for (std::size_t number = 0; number < accessible.size(); ++number) {
        sights.push_back(accessible[number]  ? Sight::Seen
                         : isWritten[number] ? Sight::PastViews
                                             : Sight::NotSeen);
    }
    return sights;
}

bool ToldViewers::areLike(ToldViewers const& other) const {
    return areRoles == other.areRoles && sight == other.sight && why == other.why &&
           tree == other.tree;
}

void ObjectSight::add(ToldViewers told) {
    auto const like = std::find_if(viewers.begin(), viewers.end(),
                                   [&](ToldViewers const& each) { return each.areLike(told); });
    if (like == viewers.end()) {
        viewers.push_back(std::move(told));
    } else {
        like->names.insert(like->names.end(), told.names.begin(), told.names.end());
    }
}

} // namespace vex
