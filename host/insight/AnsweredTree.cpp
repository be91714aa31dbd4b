#include "host/insight/AnsweredTree.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/HostException.h"

#include <algorithm>

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
    AnswerMatch(Model const& model, I18NLocale const& locale, TreeQuestion const& question)
        : m_model(model), m_locale(locale), m_question(question), m_listed(question.collections),
          m_listedOfNamespaces(question.collections) {
        if (question.GoesIntoEveryCollection() && !question.start.empty()) {
            for (std::string_view const collection : collectionsOnThePath) {
                m_listedOfNamespaces.push_back(
                    I18NString::fromUtf8(collection.substr(collection.find('/') + 1)));
            }
        }
        for (auto* const list : {&m_listed, &m_listedOfNamespaces}) {
            list->emplace_back(shortcutClass);
            list->emplace_back("namespace");
        }
    }

    AnsweredTree Match(KRLIDOM_Element const& response) {
        Elements roots(firstElementFrom(response.getFirstChild())); // in "Result"
        if (roots.Next().isNull()) {
            return {}; // nothing was written: the start has nothing to show
        }
        KRLIDOM_Element const root(roots.Next());
        roots.Take();
        VEX_HANDLE const start = m_model.FindById(root.getAttribute("ID"));
        if (!start.IsNotNull()) {
            throw HostException("the tree starts at an object without an id; give it one");
        }
        Place const place{root.getAttribute("_path"), AnsweredObject::None, 1, false, nullptr};
        Elements members(root);
        if (root.getAttribute(m_question.marker).empty()) {
            std::size_t const entry = Add(start, WrittenFate(start, place), place);
            if (Descends(place.level)) {
                Members(start, MembersPlace(place, place.path, entry), members);
            }
        } else {
            ExpandStart(ShortcutTo(start, root.getAttribute("name")), start, place, members);
        }
        RefuseRest(members);
        RefuseRest(roots);
        return std::move(m_tree);
    }

private:
    /// The elements inside one element of the answer that are yet to be taken.
    class Elements {
    public:
        explicit Elements(KRLIDOM_Node const& parent)
            : m_next(firstElementFrom(parent.getFirstChild())) {}
        KRLIDOM_Node const& Next() const { return m_next; }
        void Take() { m_next = firstElementFrom(m_next.getNextSibling()); }

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
        int level;
        bool behindShortcut;
        Expansion const* expansion;
    };

    /// The shortcut that a tree starts at, which the answer tells by its target
    /// and its name.
    VEX_HANDLE ShortcutTo(VEX_HANDLE target, I18NString const& name) const {
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

    void ExpandStart(VEX_HANDLE shortcut, VEX_HANDLE target, Place const& place,
                     Elements& elements) {
        std::size_t const entry = Add(shortcut, WrittenFate(shortcut, place), place);
        m_tree[entry].target = target;
        if (Descends(place.level)) {
            Expansion const expansion{shortcut, nullptr};
            MembersBehind(target, {place.path, entry, place.level + 1, true, &expansion}, elements);
        }
    }

    static Place MembersPlace(Place const& place, I18NString const& path, std::size_t entry) {
        return {path, entry, place.level + 1, place.behindShortcut, place.expansion};
    }

    bool Descends(int level) const { return m_question.depth == 0 || level < m_question.depth; }

    std::size_t Add(VEX_HANDLE object, ObjectFate fate, Place const& place) {
        m_tree.push_back({object, VEX_HANDLE(), fate, place.container, place.behindShortcut});
        return m_tree.size() - 1;
    }

    bool IsLost(Place const& place) const {
        if (place.container == AnsweredObject::None) {
            return false;
        }
        ObjectFate const fate = m_tree[place.container].fate;
        return fate == ObjectFate::WithoutName || fate == ObjectFate::WithItsContainer;
    }

    /// The fate of an object unless the answer left it out.
    ObjectFate WrittenFate(VEX_HANDLE object, Place const& place) const {
        if (IsLost(place)) {
            return ObjectFate::WithItsContainer;
        }
        return nameIn(m_locale, object).empty() ? ObjectFate::WithoutName : ObjectFate::Written;
    }

    void Members(VEX_HANDLE object, Place const& place, Elements& elements) {
        Vex_Handle_Collection children;
        VexObject(object).childObjects(children, nullptr, nullptr);
        for (I18NString const& name : CollectionsIn(children)) {
            for (VEX_HANDLE const child : children) {
                if (classOf(child) != name) {
                    continue;
                }
                if (name == shortcutClass) {
                    Shortcut(child, place, PathOf(child, place), elements);
                } else {
                    Object(child, place, elements);
                }
            }
        }
    }

    /// The members of a shortcut's target. A shortcut among them has the path
    /// of the one that it was reached through.
    void MembersBehind(VEX_HANDLE target, Place const& place, Elements& elements) {
        Vex_Handle_Collection children;
        VexObject(target).childObjects(children, nullptr, nullptr);
        for (I18NString const& name :
             classOf(target) == "namespace" ? m_listedOfNamespaces : m_listed) {
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

    std::vector<I18NString> CollectionsIn(Vex_Handle_Collection const& children) const {
        if (!m_question.GoesIntoEveryCollection()) {
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

    I18NString PathOf(VEX_HANDLE object, Place const& place) const {
        // A "]" in the name is not doubled in answers.
        return place.path + ".[" + nameIn(m_locale, object) + "]";
    }

    void Object(VEX_HANDLE object, Place const& place, Elements& elements) {
        I18NString const path = PathOf(object, place);
        KRLIDOM_Element const next(elements.Next());
        bool const isWritten = !next.isNull() && next.getTagName() == tagFor(classOf(object)) &&
                               next.getAttribute("ID") == idOf(object) &&
                               next.getAttribute("_path") == path &&
                               next.getAttribute(m_question.marker).empty();
        ObjectFate fate = WrittenFate(object, place);
        if (fate == ObjectFate::Written && !isWritten) {
            fate = ObjectFate::LeftOut;
        }
        Place const members = MembersPlace(place, path, Add(object, fate, place));
        if (!isWritten) {
            Members(object, members, elements);
            return;
        }
        elements.Take();
        Elements inside(next);
        if (Descends(place.level)) {
            Members(object, members, inside);
        }
        RefuseRest(inside);
    }

    void Shortcut(VEX_HANDLE shortcut, Place const& place, I18NString const& path,
                  Elements& elements) {
        KRLIDOM_Element const next(elements.Next());
        VEX_HANDLE const target = targetOf(m_model, shortcut);
        if (next.isNull() || next.getAttribute(m_question.marker).empty() ||
            next.getAttribute("_path") != path) {
            Add(shortcut,
                IsLost(place) ? ObjectFate::WithItsContainer : ObjectFate::NothingToStandFor,
                place);
            return;
        }
        elements.Take();
        std::size_t const entry = Add(shortcut, WrittenFate(shortcut, place), place);
        m_tree[entry].target = target;
        Elements inside(next);
        if (Descends(place.level) && !(m_question.depth == 0 && IsUnderWay(place, shortcut))) {
            Expansion const expansion{shortcut, place.expansion};
            MembersBehind(target, {path, entry, place.level + 1, true, &expansion}, inside);
        }
        RefuseRest(inside);
    }

    static bool IsUnderWay(Place const& place, VEX_HANDLE shortcut) {
        for (Expansion const* at = place.expansion; at != nullptr; at = at->outer) {
            if (at->shortcut == shortcut) {
                return true;
            }
        }
        return false;
    }

    static void RefuseRest(Elements const& elements) {
        if (!elements.Next().isNull()) {
            KRLIDOM_Element const rest(elements.Next());
            throw HostException("the answer does not follow the model at the element " +
                                rest.getTagName().toUtf8() + " " +
                                rest.getAttribute("_path").toUtf8());
        }
    }

    Model const& m_model;
    I18NLocale const& m_locale;
    TreeQuestion const& m_question;
    std::vector<I18NString> m_listed; // as the request names them
    std::vector<I18NString> m_listedOfNamespaces;
    AnsweredTree m_tree;
};

} // namespace

AnsweredTree matchAnswer(Model const& model, I18NLocale const& locale, TreeQuestion const& question,
                         KRLIDOM_Element const& response) {
    return AnswerMatch(model, locale, question).Match(response);
}

} // namespace vex
