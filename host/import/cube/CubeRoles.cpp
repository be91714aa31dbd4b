#include "host/import/cube/CubeRoles.h"

#include "host/import/cube/CubeSpread.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/draft/PlainText.h"

#include <algorithm>

namespace vex {

namespace {

class RoleSight {
public:
    RoleSight(CubeModel const& model, ImportWork& work)
        : m_model(model), m_work(work), m_spread(model, work) {}

    /// For each object of the draft, whether who is granted these parts sees it.
    std::vector<bool> of(std::vector<bool> const& granted, std::string const& role) {
        std::vector<bool> isHidden(granted.size());
        for (std::size_t part = 0; part < granted.size(); ++part) {
            isHidden[part] = !granted[part] && m_model.parts[part].kind != CubePartKind::Join;
        }
        m_spread.spread(isHidden);
        noteSpread(granted, isHidden, role);
        m_work.spendOnViews(m_work.draft.model.size());
        std::vector<bool> isSeen(m_work.draft.model.size());
        seeMembers(isHidden, isSeen);
        seeHierarchies(isHidden, isSeen);
        seeAround(isSeen);
        seeJoins(isHidden, isSeen);
        return isSeen;
    }

private:
    bool isPublic(CubePart const& part) const {
        return part.isPublic && m_model.things[part.owner].isPublic;
    }

    void seeMembers(std::vector<bool> const& isHidden, std::vector<bool>& isSeen) const {
        for (std::size_t number = 0; number < m_model.parts.size(); ++number) {
            CubePart const& part = m_model.parts[number];
            bool const isMember =
                part.kind != CubePartKind::Join && part.kind != CubePartKind::Hierarchy;
            if (isMember && part.object != CubePart::None) {
                isSeen[part.object] = !isHidden[number] && isPublic(part);
            }
        }
    }

    /// A level is seen with its dimension, a hierarchy with a level.
    void seeHierarchies(std::vector<bool> const& isHidden, std::vector<bool>& isSeen) const {
        for (CubeLevel const& level : m_model.levels) {
            CubePart const& hierarchy = m_model.parts[level.hierarchy];
            bool const isLevelSeen = !isHidden[level.hierarchy] && isPublic(hierarchy) &&
                                     isSeen[m_model.parts[level.dimension].object];
            isSeen[level.object] = isLevelSeen;
            isSeen[hierarchy.object] = isSeen[hierarchy.object] || isLevelSeen;
        }
    }

    /// Folders, cubes and views are seen with something in them, and so is the whole. Members
    /// are younger than what is around them.
    void seeAround(std::vector<bool>& isSeen) const {
        ModelDraft const& draft = m_work.draft.model;
        for (std::size_t object = draft.size(); object-- > 0;) {
            std::size_t const around = draft[object].container;
            if (isSeen[object] && around != DraftObject::None && around != ModelDraft::Root) {
                isSeen[around] = true;
            }
        }
    }

    void seeJoins(std::vector<bool> const& isHidden, std::vector<bool>& isSeen) const {
        for (std::size_t number = 0; number < m_model.parts.size(); ++number) {
            CubePart const& part = m_model.parts[number];
            if (part.kind == CubePartKind::Join && part.object != CubePart::None) {
                std::size_t const other = m_model.findThing(part.name);
                isSeen[part.object] = !isHidden[number] &&
                                      isSeen[m_model.things[part.owner].object] &&
                                      isSeen[m_model.things[other].object];
            }
        }
    }

    void noteSpread(std::vector<bool> const& granted, std::vector<bool> const& isHidden,
                    std::string const& role) {
        std::size_t count = 0;
        for (std::size_t part = 0; part < granted.size(); ++part) {
            count += granted[part] && isHidden[part] ? 1U : 0U;
        }
        if (count > 0) {
            m_work.account.note("the role " + quotedText(role) + " does not see " +
                                std::to_string(count) +
                                " of the members that it is granted, since their SQL names what "
                                "is hidden from it");
        }
    }

    CubeModel const& m_model;
    ImportWork& m_work;
    CubeSpread const m_spread;
};

void addView(std::string const& role, std::vector<bool> const& isSeen,
             std::vector<bool> const& isSeenByAll, ImportWork& work) {
    std::string path;
    appendToPath(path, role);
    DraftView view{.key = {"role", path}, .name = role};
    for (std::size_t object = 0; object < isSeen.size(); ++object) {
        if (isSeen[object] && !isSeenByAll[object]) {
            view.included.push_back(object);
        }
    }
    if (view.included.empty()) {
        work.account.note("the role " + quotedText(role) + " sees nothing" +
                          (role == CubePolicies::All ? "" : " beside what everybody sees"));
        return;
    }
    work.draft.grants.push_back({role, work.draft.views.size()});
    work.draft.views.push_back(std::move(view));
}

} // namespace

void makeCubeRoles(CubeModel const& model, CubePolicies const& policies, ImportWork& work) {
    if (!policies.areThere()) {
        return;
    }
    work.draft.roleOfAll = CubePolicies::All;
    RoleSight sight(model, work);
    std::vector<bool> const grantedToAll = policies.grantedTo(CubePolicies::All);
    std::vector<bool> const isSeenByAll = sight.of(grantedToAll, CubePolicies::All);
    addView(CubePolicies::All, isSeenByAll, std::vector<bool>(isSeenByAll.size()), work);
    for (std::string const& role : policies.roles()) {
        if (role == CubePolicies::All) {
            continue;
        }
        std::vector<bool> granted = policies.grantedTo(role);
        for (std::size_t part = 0; part < granted.size(); ++part) {
            granted[part] = granted[part] || grantedToAll[part];
        }
        addView(role, sight.of(granted, role), isSeenByAll, work);
    }
}

} // namespace vex
