#include "host/insight/TreeCheck.h"

#include "host/insight/ObjectReference.h"
#include "host/insight/ObjectText.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <vector>

namespace vex {

namespace {

struct CauseRow {
    DifferenceCause cause;
    char const* code;
    char const* text;
};
constexpr CauseRow causes[] = {
    {DifferenceCause::Start, "start", "shown because a tree starts at it"},
    {DifferenceCause::NamespaceOfShown, "namespace-of-shown",
     "a namespace that is shown for what is included in it"},
    {DifferenceCause::ShortcutUntested, "shortcut-untested",
     "a shortcut, which is shown without being tested"},
    {DifferenceCause::BehindShortcut, "behind-shortcut",
     "reached through a shortcut, behind which the included objects of views are not asked for"},
    {DifferenceCause::WithoutName, "without-name", "left out for want of a name in this language"},
    {DifferenceCause::ContainerUnnamed, "container-unnamed",
     "left out with its container, for want of whose name in this language"},
    {DifferenceCause::NothingToStandFor, "nothing-to-stand-for",
     "a shortcut without a name or a target"},
    {DifferenceCause::NoTreeStarts, "no-tree-starts",
     "in a namespace that no request can start at"},
    {DifferenceCause::NotGoneInto, "not-gone-into", "in something that trees do not go into"},
    {DifferenceCause::OutsideNamespaces, "outside-namespaces", "in no namespace"},
    {DifferenceCause::Unexplained, "unexplained", "for no reason that is known"},
};

CauseRow const& rowOf(DifferenceCause cause) {
    return *std::find_if(std::begin(causes), std::end(causes),
                         [&](CauseRow const& row) { return row.cause == cause; });
}

/// The entries of each object.
class TreeIndex {
public:
    explicit TreeIndex(AnsweredTree const& trees) {
        m_entries.reserve(trees.size());
        for (AnsweredObject const& entry : trees) {
            m_entries.push_back(&entry);
        }
        std::stable_sort(m_entries.begin(), m_entries.end(), isBefore);
    }

    bool has(VEX_HANDLE object) const {
        return find(object, [](auto const& /*entry*/) { return true; }) != nullptr;
    }

    template <class Holds> AnsweredObject const* find(VEX_HANDLE object, Holds const& holds) const {
        AnsweredObject wanted;
        wanted.object = object;
        auto const [first, last] =
            std::equal_range(m_entries.begin(), m_entries.end(), &wanted, isBefore);
        auto const found =
            std::find_if(first, last, [&](AnsweredObject const* entry) { return holds(*entry); });
        return found == last ? nullptr : *found;
    }
    bool isWritten(VEX_HANDLE object) const {
        return find(object, [](auto const& entry) { return entry.fate == ObjectFate::Written; }) !=
               nullptr;
    }

private:
    static bool isBefore(AnsweredObject const* a, AnsweredObject const* b) {
        return a->object.Number() < b->object.Number();
    }

    std::vector<AnsweredObject const*> m_entries; // by object
};

DifferenceCause causeOfPresence(VEX_HANDLE object, TreeIndex const& index) {
    AnsweredObject const* const direct = index.find(object, [](auto const& entry) {
        return entry.fate == ObjectFate::Written && !entry.behindShortcut;
    });
    if (direct == nullptr) {
        return DifferenceCause::BehindShortcut;
    }
    if (direct->container == AnsweredObject::None) {
        return DifferenceCause::Start;
    }
    if (direct->target.IsNotNull()) {
        return DifferenceCause::ShortcutUntested;
    }
    return classOf(object) == "namespace" ? DifferenceCause::NamespaceOfShown
                                          : DifferenceCause::Unexplained;
}

DifferenceCause causeOfAbsence(VEX_HANDLE object, TreeIndex const& index) {
    struct Row {
        ObjectFate fate;
        DifferenceCause cause;
    };
    constexpr Row rows[] = {
        {ObjectFate::WithoutName, DifferenceCause::WithoutName},
        {ObjectFate::WithItsContainer, DifferenceCause::ContainerUnnamed},
        {ObjectFate::NothingToStandFor, DifferenceCause::NothingToStandFor},
    };
    for (Row const& row : rows) {
        if (index.find(object, [&](auto const& entry) { return entry.fate == row.fate; })) {
            return row.cause;
        }
    }
    if (index.has(object)) {
        return DifferenceCause::Unexplained;
    }
    VEX_HANDLE const space = outermostNamespaceOf(object);
    if (!space.IsNotNull()) {
        return DifferenceCause::OutsideNamespaces;
    }
    return index.has(space) ? DifferenceCause::NotGoneInto : DifferenceCause::NoTreeStarts;
}

/// Of what trees leave out, that in which they show something; each object once, in the
/// order of the model.
std::vector<HiddenContainer> containersNamed(Model const& model, AnsweredTree const& trees) {
    std::vector<HiddenContainer> below(trees.size()); // what is shown there
    std::unordered_map<VEX_HANDLE, HiddenContainer> named;
    for (std::size_t number = trees.size(); number-- > 0;) { // members stand behind containers
        AnsweredObject const& entry = trees[number];
        HiddenContainer shown = below[number];
        if (entry.fate == ObjectFate::LeftOut && shown.objects != 0) {
            HiddenContainer& container = named[entry.object];
            container = {entry.object, container.objects + shown.objects, shown.example};
        }
        if (entry.fate == ObjectFate::Written) {
            shown = {{}, shown.objects + 1, entry.object};
        }
        if (entry.container != AnsweredObject::None && shown.objects != 0) {
            HiddenContainer& around = below[entry.container];
            around = {{}, around.objects + shown.objects, shown.example};
        }
    }
    std::vector<HiddenContainer> ordered;
    for (std::size_t number = 0; number < model.elementCount() && !named.empty(); ++number) {
        auto const found = named.find(model.getElement(number));
        if (found != named.end()) {
            ordered.push_back(found->second);
        }
    }
    return ordered;
}

bool isByShortcut(DifferenceCause cause) {
    return cause == DifferenceCause::ShortcutUntested || cause == DifferenceCause::BehindShortcut;
}

} // namespace

char const* codeOf(DifferenceCause cause) {
    return rowOf(cause).code;
}

char const* textOf(DifferenceCause cause) {
    return rowOf(cause).text;
}

bool isRequired(DifferenceCause cause) {
    return cause != DifferenceCause::Unexplained;
}

bool isShownPastViews(DifferenceCause cause) {
    return cause == DifferenceCause::Start || cause == DifferenceCause::NamespaceOfShown ||
           isByShortcut(cause);
}

TreeCheck checkTrees(Model const& model, AnsweredTree const& trees,
                     std::vector<bool> const& accessible) {
    TreeIndex const index(trees);
    TreeCheck check;
    std::vector<VEX_HANDLE> visible;
    std::vector<bool> canSee(model.elementCount());
    for (std::size_t number = 0; number < model.elementCount(); ++number) {
        VEX_HANDLE const object = model.getElement(number);
        bool const inTree = index.isWritten(object);
        ++check.objects;
        if (inTree) {
            visible.push_back(object);
        }
        bool isSeen = accessible[number];
        if (inTree != accessible[number]) {
            DifferenceCause const cause =
                inTree ? causeOfPresence(object, index) : causeOfAbsence(object, index);
            check.differences.push_back({object, inTree, cause});
            isSeen = isSeen || !isByShortcut(cause);
        }
        canSee[number] = isSeen;
    }
    for (HiddenContainer const& container : containersNamed(model, trees)) {
        if (!canSee.at(numberOf(model, container.container))) {
            check.hiddenContainers.push_back(container);
        }
    }
    check.leaks = findLeaks(model, visible,
                            [&](VEX_HANDLE object) { return canSee.at(numberOf(model, object)); });
    return check;
}

} // namespace vex
