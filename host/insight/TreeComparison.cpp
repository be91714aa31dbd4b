#include "host/insight/TreeComparison.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace vex {

namespace {

constexpr char const* nameProperty = "name";

using Handles = std::unordered_map<VEX_HANDLE, VEX_HANDLE>;

/// The object of the first model that each one of the second is.
Handles pairObjects(Model const& before, Model const& after) {
    Handles pairs{{after.GetRootObject(), before.GetRootObject()}};
    std::unordered_set<VEX_HANDLE> taken{before.GetRootObject()};
    auto const pairWith = [&](VEX_HANDLE object, VEX_HANDLE other) {
        if (other.IsNotNull() && !pairs.contains(object) && taken.insert(other).second) {
            pairs.emplace(object, other);
        }
    };
    for (std::size_t number = 1; number < after.elementCount(); ++number) {
        VEX_HANDLE const object = after.getElement(number);
        pairWith(object, &before == &after ? object : before.findById(idOf(object)));
    }
    for (std::size_t number = 1; number < after.elementCount(); ++number) {
        VEX_HANDLE const object = after.getElement(number);
        I18NString reference;
        if (!pairs.contains(object) && after.getReference(object, reference)) {
            pairWith(object, before.GetObjectByReference(reference, 0));
        }
    }
    return pairs;
}

using Presences = std::unordered_map<VEX_HANDLE, Presence>;

Presences presencesIn(AnsweredTree const& trees) {
    Presences presences;
    for (AnsweredObject const& entry : trees) {
        if (entry.fate == ObjectFate::Written) {
            Presence& presence = presences[entry.object];
            presence = std::max(presence, entry.behindShortcut ? Presence::BehindShortcuts
                                                               : Presence::InItsPlace);
        }
    }
    return presences;
}

Presence presenceOf(VEX_HANDLE object, Presences const& presences) {
    auto const found = presences.find(object);
    return found == presences.end() ? Presence::None : found->second;
}

I18NString wordOf(Presence presence) {
    constexpr char const* words[] = {"no", "behind a shortcut", "yes"};
    return words[static_cast<std::size_t>(presence)];
}

/// The names of the simple properties, those of the first object in front.
std::vector<I18NString> propertiesOf(VEX_HANDLE before, VEX_HANDLE after) {
    std::vector<I18NString> names;
    for (VEX_HANDLE const object : {before, after}) {
        Vex_Handle_Collection properties;
        VexObject(object).Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            I18NString name = classOf(property); // of a property: its name
            if (!VexObject(property).hasChildObjects() &&
                std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(std::move(name));
            }
        }
    }
    return names;
}

I18NString valueOf(VEX_HANDLE object, I18NString const& property, I18NLocale const& locale) {
    I18NString value;
    VexObject(VexObject(object).GetPropertyByName(property, &locale)).GetValue(value, true);
    return value;
}

class TreeComparison {
public:
    TreeComparison(ComparedSide const& before, ComparedSide const& after)
        : m_before(before), m_after(after), m_presencesBefore(presencesIn(before.trees)),
          m_presencesAfter(presencesIn(after.trees)) {
        for (std::size_t number = 0; number < before.others.size(); ++number) {
            m_others.push_back({before.others[number].locale, after.others[number].locale,
                                presencesIn(before.others[number].trees),
                                presencesIn(after.others[number].trees)});
        }
        addObjects();
        for (std::size_t number = 0; number < m_objects.size(); ++number) {
            compare(m_objects[number]);
        }
    }

    std::vector<ComparedObject> differences() {
        std::vector<bool> isListed(m_objects.size(), false);
        for (std::size_t number = 0; number < m_objects.size(); ++number) {
            bool const differs = m_objects[number].change != ComparedObject::Change::None;
            for (std::size_t at = number;
                 differs && at != ComparedObject::NoContainer && !isListed[at];
                 at = m_objects[at].container) {
                isListed[at] = true;
            }
        }
        return inOrder(isListed);
    }

private:
    /// A further language, as each side finds it.
    struct Language {
        I18NLocale before;
        I18NLocale after;
        Presences presencesBefore;
        Presences presencesAfter;
    };

    /// One for each object of either model; the roots are the first.
    void addObjects() {
        Handles const pairs = pairObjects(m_before.model, m_after.model);
        for (std::size_t number = 0; number < m_after.model.elementCount(); ++number) {
            VEX_HANDLE const object = m_after.model.getElement(number);
            auto const pair = pairs.find(object);
            VEX_HANDLE const other = pair == pairs.end() ? VEX_HANDLE() : pair->second;
            add(other, object, m_placeAfter, object);
        }
        for (std::size_t number = 0; number < m_before.model.elementCount(); ++number) {
            VEX_HANDLE const object = m_before.model.getElement(number);
            if (!m_placeBefore.contains(object)) {
                add(object, {}, m_placeBefore, object);
            }
        }
    }

    using Places = std::unordered_map<VEX_HANDLE, std::size_t>;

    void add(VEX_HANDLE before, VEX_HANDLE after, Places const& places, VEX_HANDLE placed) {
        auto const container = places.find(VexObject(placed).GetParent());
        ComparedObject object;
        object.before = before;
        object.after = after;
        object.container =
            container == places.end() ? ComparedObject::NoContainer : container->second;
        std::size_t const place = m_objects.size();
        if (before.IsNotNull()) {
            m_placeBefore.emplace(before, place);
        }
        if (after.IsNotNull()) {
            m_placeAfter.emplace(after, place);
        }
        m_objects.push_back(std::move(object));
    }

    void compare(ComparedObject& object) const {
        using Change = ComparedObject::Change;
        object.presenceBefore = presenceOf(object.before, m_presencesBefore);
        object.presenceAfter = presenceOf(object.after, m_presencesAfter);
        if (object.presenceBefore != object.presenceAfter) {
            object.change =
                object.presenceBefore < object.presenceAfter ? Change::Appears : Change::Disappears;
            return;
        }
        if (object.presenceAfter != Presence::None) {
            compareProperties(object);
        }
        for (Language const& language : m_others) {
            compareIn(language, object);
        }
        object.change = object.properties.empty() ? Change::None : Change::Changes;
    }

    /// What only a further language shows.
    void compareIn(Language const& language, ComparedObject& object) const {
        I18NString const suffix = I18NString(" (").append(language.before.getName()).append(")");
        Presence const was = presenceOf(object.before, language.presencesBefore);
        Presence const is = presenceOf(object.after, language.presencesAfter);
        if (was != is) {
            object.properties.push_back(
                {I18NString("shown").append(suffix), wordOf(was), wordOf(is)});
        }
        if (was == Presence::None || is == Presence::None) {
            return;
        }
        for (I18NString const& property : propertiesOf(object.before, object.after)) {
            I18NString const before = valueOf(object.before, property, language.before);
            I18NString const after = valueOf(object.after, property, language.after);
            bool const isAsInTheFirst =
                before == valueOf(object.before, property, m_before.locale) &&
                after == valueOf(object.after, property, m_after.locale);
            if (before != after && !isAsInTheFirst) {
                object.properties.push_back({I18NString(property).append(suffix), before, after});
            }
        }
    }

    void compareProperties(ComparedObject& object) const {
        auto const note = [&](I18NString const& property, I18NString before, I18NString after) {
            if (before != after) {
                object.properties.push_back({property, std::move(before), std::move(after)});
            }
        };
        note("ID", idOf(object.before), idOf(object.after));
        note("class", classOf(object.before), classOf(object.after));
        for (I18NString const& property : propertiesOf(object.before, object.after)) {
            note(property, valueOf(object.before, property, m_before.locale),
                 valueOf(object.after, property, m_after.locale));
        }
        VEX_HANDLE const was = VexObject(object.before).GetParent();
        VEX_HANDLE const is = VexObject(object.after).GetParent();
        if (m_placeBefore.at(was) != m_placeAfter.at(is)) {
            note("container", keyOf(m_before.model, was), keyOf(m_after.model, is));
        }
    }

    /// The listed ones, each behind its container and its earlier siblings.
    std::vector<ComparedObject> inOrder(std::vector<bool> const& isListed) {
        std::vector<std::vector<std::size_t>> members(m_objects.size());
        std::vector<std::size_t> pending;
        for (std::size_t number = m_objects.size(); number-- > 0;) {
            std::size_t const container = m_objects[number].container;
            if (!isListed[number]) {
                continue;
            }
            (container == ComparedObject::NoContainer ? pending : members[container])
                .push_back(number);
        }
        std::vector<ComparedObject> ordered;
        std::vector<std::size_t> places(m_objects.size());
        while (!pending.empty()) {
            std::size_t const number = pending.back();
            pending.pop_back();
            places[number] = ordered.size();
            ComparedObject& object = ordered.emplace_back(std::move(m_objects[number]));
            if (object.container != ComparedObject::NoContainer) {
                object.container = places[object.container];
            }
            pending.insert(pending.end(), members[number].begin(), members[number].end());
        }
        return ordered;
    }

    ComparedSide const& m_before;
    ComparedSide const& m_after;
    Presences m_presencesBefore;
    Presences m_presencesAfter;
    std::vector<Language> m_others;
    std::vector<ComparedObject> m_objects;
    Places m_placeBefore;
    Places m_placeAfter;
};

} // namespace

bool ComparedObject::isRenamed() const {
    return std::any_of(properties.begin(), properties.end(), [](PropertyChange const& each) {
        return each.property == nameProperty || each.property.find("name (") == 0;
    });
}

std::vector<ComparedObject> compareTrees(ComparedSide const& before, ComparedSide const& after) {
    return TreeComparison(before, after).differences();
}

} // namespace vex
