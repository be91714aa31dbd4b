#include "host/insight/AnsweredTree.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/HostException.h"

#include <algorithm>
#include <unordered_set>

namespace vex {

namespace {

constexpr char const* shortcutClass = "shortcut";

KRLIDOM_Node firstElementFrom(KRLIDOM_Node node) {
    while (!node.isNull() && node.getNodeType() != KRLIDOM_Node::ElementNode) {
        node = node.getNextSibling();
    }
    return node;
}

I18NString tagFor(I18NString const& className) {
    return className == "namespace" ? I18NString("folder") : className;
}

/// Goes through the model as the answer was written, and takes the answer's
/// elements one by one.
class AnswerMatch {
public:
    AnswerMatch(Model const& model, I18NLocale const& locale, TreeQuestion const& question,
                ExpansionMemory* memory)
        : m_model(model), m_locale(locale), m_question(question), m_memory(memory),
          m_listed(question.collections) {
        m_listed.emplace_back(shortcutClass);
        m_listed.emplace_back("namespace");
    }

    AnsweredTree match(KRLIDOM_Element const& response) {
        Elements roots(firstElementFrom(response.getFirstChild())); // in "Result"
        if (roots.next().isNull()) {
            return {}; // nothing was written: the start has nothing to show
        }
        KRLIDOM_Element const root(roots.next());
        roots.take();
        bool const isShortcut = !root.getAttribute(m_question.marker).empty();
        Place const place{root.getAttribute("_path"), AnsweredObject::None, false, nullptr};
        Elements members(root);
        if (isShortcut && m_question.startShortcut.IsNotNull()) {
            VEX_HANDLE const shortcut = m_question.startShortcut;
            expandStart(shortcut, targetOf(m_model, shortcut), place, members);
            refuseRest(members);
            refuseRest(roots);
            return std::move(m_tree);
        }
        VEX_HANDLE const start = m_model.findById(root.getAttribute("ID"));
        if (!start.IsNotNull()) {
            throw HostException("the tree starts at an object without an id; give it one");
        }
        if (!isShortcut) {
            std::size_t const entry = add(start, writtenFate(start, place), place);
            Members(start, membersPlace(place, place.path, entry), members);
        } else {
            expandStart(shortcutTo(start, root.getAttribute("name")), start, place, members);
        }
        refuseRest(members);
        refuseRest(roots);
        return std::move(m_tree);
    }

private:
    /// The elements inside one element of the answer that are yet to be taken.
    class Elements {
    public:
        explicit Elements(KRLIDOM_Node const& parent)
            : m_next(firstElementFrom(parent.getFirstChild())) {}
        KRLIDOM_Node const& next() const { return m_next; }
        void take() { m_next = firstElementFrom(m_next.getNextSibling()); }

    private:
        KRLIDOM_Node m_next;
    };

    /// The shortcuts whose targets are being gone through.
    struct Expansion {
        VEX_HANDLE shortcut;
        Expansion const* outer;
    };

    /// Where objects are met.
    struct Place {
        I18NString path;       // that the answer gives for their container
        std::size_t container; // its entry
        bool behindShortcut;
        Expansion const* expansion;
    };

    /// The shortcut that a tree starts at, which the answer tells by its target
    /// and its name.
    VEX_HANDLE shortcutTo(VEX_HANDLE target, I18NString const& name) const {
        Vex_Handle_Collection shortcuts;
        VexObject(m_model.GetRootObject()).getElementsByTagName(shortcutClass, shortcuts);
        for (VEX_HANDLE const shortcut : shortcuts) {
            if (nameIn(m_locale, shortcut) == name && targetOf(m_model, shortcut) == target) {
                return shortcut;
            }
        }
        throw HostException("the tree starts at a shortcut that the model does not have: " +
                            name.toUtf8());
    }

    void expandStart(VEX_HANDLE shortcut, VEX_HANDLE target, Place const& place,
                     Elements& elements) {
        std::size_t const entry = add(shortcut, writtenFate(shortcut, place), place);
        m_tree[entry].target = target;
        Expansion const expansion{shortcut, nullptr};
        if (goesInto(target, entry, m_levels[entry])) {
            membersBehind(target, {place.path, entry, true, &expansion}, elements);
        }
    }

    static Place membersPlace(Place const& place, I18NString const& path, std::size_t entry) {
        return {path, entry, place.behindShortcut, place.expansion};
    }

    std::size_t add(VEX_HANDLE object, ObjectFate fate, Place const& place) {
        m_tree.push_back({object, VEX_HANDLE(), fate, place.container, place.behindShortcut,
                          place.behindShortcut});
        m_levels.push_back(place.container == AnsweredObject::None ? 1
                                                                   : m_levels[place.container] + 1);
        return m_tree.size() - 1;
    }

    bool isLost(Place const& place) const {
        if (place.container == AnsweredObject::None) {
            return false;
        }
        return m_tree[place.container].losesItsMembers();
    }

    /// What stands behind shortcuts may have been gone into before.
    bool goesInto(VEX_HANDLE whole, std::size_t entry, int level) {
        AnsweredObject& at = m_tree[entry];
        if (m_memory != nullptr && VexObject(whole).hasChildObjects()) {
            at.members = m_memory->enter(whole, at.losesItsMembers(), level);
        }
        return at.members == MembersMet::Here;
    }

    /// The fate of an object unless the answer left it out.
    ObjectFate writtenFate(VEX_HANDLE object, Place const& place) const {
        if (isLost(place)) {
            return ObjectFate::WithItsContainer;
        }
        return nameIn(m_locale, object).empty() ? ObjectFate::WithoutName : ObjectFate::Written;
    }

    void Members(VEX_HANDLE object, Place const& place, Elements& elements) {
        Vex_Handle_Collection children;
        VexObject(object).childObjects(children, nullptr, nullptr);
        for (I18NString const& name : collectionsIn(children)) {
            for (VEX_HANDLE const child : children) {
                if (classOf(child) != name) {
                    continue;
                }
                if (name == shortcutClass) {
                    Shortcut(child, place, pathOf(child, place), elements);
                } else {
                    Object(child, place, elements);
                }
            }
        }
    }

    /// The members of a shortcut's target. A shortcut among them has the path
    /// of the one that it was reached through.
    void membersBehind(VEX_HANDLE target, Place const& place, Elements& elements) {
        Vex_Handle_Collection children;
        VexObject(target).childObjects(children, nullptr, nullptr);
        for (I18NString const& name : m_listed) {
            for (VEX_HANDLE const child : children) {
                if (classOf(child) != name) {
                    continue;
                }
                if (name == shortcutClass) {
                    Shortcut(child, place, place.path, elements);
                } else {
                    Object(child, place, elements);
                }
            }
        }
    }

    std::vector<I18NString> collectionsIn(Vex_Handle_Collection const& children) const {
        if (!m_question.goesIntoEveryCollection()) {
            return m_listed;
        }
        std::vector<I18NString> names;
        for (VEX_HANDLE const child : children) {
            I18NString name = classOf(child);
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(std::move(name));
            }
        }
        return names;
    }

    I18NString pathOf(VEX_HANDLE object, Place const& place) const {
        // A "]" in the name is not doubled in answers.
        return place.path + ".[" + nameIn(m_locale, object) + "]";
    }

    void Object(VEX_HANDLE object, Place const& place, Elements& elements) {
        I18NString const path = pathOf(object, place);
        KRLIDOM_Element const next(elements.next());
        bool const isWritten = !next.isNull() && next.getTagName() == tagFor(classOf(object)) &&
                               next.getAttribute("ID") == idOf(object) &&
                               next.getAttribute("_path") == path &&
                               next.getAttribute(m_question.marker).empty();
        ObjectFate fate = writtenFate(object, place);
        if (fate == ObjectFate::Written && !isWritten) {
            fate = ObjectFate::LeftOut;
        }
        std::size_t const entry = add(object, fate, place);
        Place const members = membersPlace(place, path, entry);
        bool const hasMembers =
            !place.behindShortcut || goesInto(object, entry, ExpansionMemory::NoShortcut);
        if (!isWritten) {
            if (hasMembers) {
                Members(object, members, elements);
            }
            return;
        }
        elements.take();
        Elements inside(next);
        if (hasMembers) {
            Members(object, members, inside);
        }
        refuseRest(inside);
    }

    void Shortcut(VEX_HANDLE shortcut, Place const& place, I18NString const& path,
                  Elements& elements) {
        KRLIDOM_Element const next(elements.next());
        VEX_HANDLE const target = targetOf(m_model, shortcut);
        if (next.isNull() || next.getAttribute(m_question.marker).empty() ||
            next.getAttribute("_path") != path) {
            add(shortcut,
                isLost(place) ? ObjectFate::WithItsContainer : ObjectFate::NothingToStandFor,
                place);
            return;
        }
        elements.take();
        std::size_t const entry = add(shortcut, writtenFate(shortcut, place), place);
        m_tree[entry].target = target;
        Elements inside(next);
        if (!isUnderWay(place, shortcut) && goesInto(target, entry, m_levels[entry])) {
            Expansion const expansion{shortcut, place.expansion};
            membersBehind(target, {path, entry, true, &expansion}, inside);
        }
        refuseRest(inside);
    }

    static bool isUnderWay(Place const& place, VEX_HANDLE shortcut) {
        for (Expansion const* at = place.expansion; at != nullptr; at = at->outer) {
            if (at->shortcut == shortcut) {
                return true;
            }
        }
        return false;
    }

    static void refuseRest(Elements const& elements) {
        if (!elements.next().isNull()) {
            KRLIDOM_Element const rest(elements.next());
            throw HostException("the answer does not follow the model at the element " +
                                rest.getTagName().toUtf8() + " " +
                                rest.getAttribute("_path").toUtf8());
        }
    }

    Model const& m_model;
    I18NLocale const& m_locale;
    TreeQuestion const& m_question;
    ExpansionMemory* m_memory;        // null: every way is gone
    std::vector<I18NString> m_listed; // as the request names them
    AnsweredTree m_tree;
    std::vector<int> m_levels; // of its entries
};

} // namespace

AnsweredTree matchAnswer(Model const& model, I18NLocale const& locale, TreeQuestion const& question,
                         KRLIDOM_Element const& response, ExpansionMemory* memory) {
    return AnswerMatch(model, locale, question, memory).match(response);
}

void continueTree(AnsweredTree& trees, std::size_t whole, AnsweredTree const& members) {
    if (members.empty() || members.front().object != trees[whole].object) {
        throw HostException("the tree starts somewhere other than at what it continues");
    }
    trees[whole].members = MembersMet::Here;
    std::size_t const before = trees.size();
    for (std::size_t number = 1; number < members.size(); ++number) {
        AnsweredObject& entry = trees.emplace_back(members[number]);
        entry.container = entry.container == 0 ? whole : before + entry.container - 1;
    }
}

std::vector<VEX_HANDLE> notGoneIntoAgain(AnsweredTree const& tree) {
    std::unordered_set<VEX_HANDLE> known;
    std::vector<VEX_HANDLE> found;
    for (AnsweredObject const& entry : tree) {
        if (entry.members != MembersMet::Here && known.insert(entry.object).second) {
            found.push_back(entry.object);
        }
    }
    return found;
}

} // namespace vex
