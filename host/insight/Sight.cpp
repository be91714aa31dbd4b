#include "host/insight/Sight.h"

#include "I18NHash.h"
#include "host/insight/ObjectReference.h"
#include "host/store/image/Budget.h"

#include <algorithm>

namespace vex {

namespace {

/// Of what `ToldViewers::areLike` compares.
std::uint64_t hashOf(ToldViewers const& told) {
    std::uint64_t const seed = I18NHashSeed();
    std::uint64_t hash = I18NHashText(told.why, seed);
    for (std::string const& sentence : told.tree) {
        hash = I18NMixHash(hash, I18NHashText(sentence, seed), seed);
    }
    return I18NMixHash(hash, static_cast<std::uint64_t>(told.sight) * 2 + (told.areRoles ? 1 : 0),
                       seed);
}

} // namespace

char const* codeOf(Sight sight) {
    constexpr char const* codes[] = {"yes", "past-views", "no", "refused", "unknown"};
    return codes[static_cast<std::size_t>(sight)];
}

std::vector<Sight> sightOfAll(Model const& model, AnsweredTree const& trees,
                              std::vector<bool> const& accessible) {
    std::vector<bool> isWritten(model.elementCount(), false);
    for (AnsweredObject const& entry : trees) {
        Budget::charge();
        if (entry.fate == ObjectFate::Written) {
            isWritten[numberOf(model, entry.object)] = true;
        }
    }
    Budget::chargeBytes(accessible.size());
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
    std::uint64_t const hash = hashOf(told);
    auto const [first, last] = places.equal_range(hash);
    auto const like = std::find_if(
        first, last, [&](auto const& place) { return viewers[place.second].areLike(told); });
    if (like == last) {
        places.emplace(hash, viewers.size());
        viewers.push_back(std::move(told));
    } else {
        std::vector<std::string>& names = viewers[like->second].names;
        names.insert(names.end(), told.names.begin(), told.names.end());
    }
}

} // namespace vex
