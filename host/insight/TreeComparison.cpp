#include "host/insight/TreeComparison.h"

#include "VexObject.h"
#include "host/insight/NameResolution.h"
#include "host/insight/ObjectReference.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"

#include <algorithm>
#include <map>

namespace vex {

namespace {

constexpr char const* nameProperty = "name";

/// The object of the first model that each one of the second is, by the number of that one.
std::vector<VEX_HANDLE> pairObjects(Model const& before, Model const& after) {
    std::vector<VEX_HANDLE> pairs(after.elementCount());
    std::vector<bool> isTaken(before.elementCount(), false);
    bool areAllPaired = true;
    auto const pair = [&](std::size_t number, VEX_HANDLE other) {
        bool const isFree = other.IsNotNull() && !isTaken[numberOf(before, other)];
        if (isFree && !pairs[number].IsNotNull()) {
            isTaken[numberOf(before, other)] = true;
            pairs[number] = other;
        }
        areAllPaired = areAllPaired && pairs[number].IsNotNull();
    };
    pair(0, before.GetRootObject());
    for (std::size_t number = 1; number < after.elementCount(); ++number) {
        VEX_HANDLE const object = after.getElement(number);
        pair(number, &before == &after ? object : before.findById(idOf(object)));
    }
    if (areAllPaired) {
        return pairs;
    }
    std::vector<VEX_HANDLE> const like = NameResolution(before).firstsLike(after);
    for (std::size_t number = 1; number < after.elementCount(); ++number) {
        pair(number, like[number]);
    }
    return pairs;
}

I18NString wordOf(Presence presence) {
    constexpr char const* words[] = {"no", "behind a shortcut", "yes"};
    return words[static_cast<std::size_t>(presence)];
}

/// A simple property of one of two objects, or of both.
struct SharedProperty {
    I18NString name;
    bool isBefore; // the first object has it
    bool isAfter;
};

/// Those of the first object in front.
std::vector<SharedProperty> propertiesOf(VEX_HANDLE before, VEX_HANDLE after) {
    std::vector<SharedProperty> shared;
    std::map<I18NString, std::size_t> places;
    for (VEX_HANDLE const object : {before, after}) {
        bool const isFirst = object == before;
        Vex_Handle_Collection properties;
        VexObject(object).Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            if (VexObject(property).hasChildObjects()) {
                continue;
            }
            I18NString const name = classOf(property); // of a property: its name
            auto const [known, isNew] = places.try_emplace(name, shared.size());
            if (isNew) {
                shared.push_back({name, isFirst, !isFirst || before == after});
            } else {
                shared[known->second].isAfter = shared[known->second].isAfter || !isFirst;
            }
        }
    }
    return shared;
}

I18NString valueOf(VEX_HANDLE object, I18NString const& property, I18NLocale const& locale) {
    I18NString value;
    VexObject(VexObject(object).GetPropertyByName(property, &locale)).GetValue(value, true);
    return value;
}

/// A property's values on both sides; what an object has not is not looked for.
struct BothValues {
    I18NString before;
    I18NString after;
};

BothValues valuesOf(ComparedObject const& object, SharedProperty const& property,
                    I18NLocale const& localeBefore, I18NLocale const& localeAfter) {
    return {property.isBefore ? valueOf(object.before, property.name, localeBefore) : I18NString(),
            property.isAfter ? valueOf(object.after, property.name, localeAfter) : I18NString()};
}

std::size_t bytesOf(I18NString const& text) {
    return sizeof(char16_t) * static_cast<std::size_t>(text.length());
}

class TreeComparison {
public:
    TreeComparison(ComparedSide const& before, ComparedSide const& after)
        : m_before(before), m_after(after), m_presencesBefore(before.model, before.trees),
          m_presencesAfter(after.model, after.trees),
          m_placeBefore(before.model.elementCount(), ComparedObject::NoContainer),
          m_placeAfter(after.model.elementCount(), ComparedObject::NoContainer) {
        for (std::size_t number = 0; number < before.others.size(); ++number) {
            m_others.push_back({before.others[number].locale, after.others[number].locale,
                                before.others[number].presences, after.others[number].presences});
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
        Presences const& presencesBefore;
        Presences const& presencesAfter;
    };

    /// One for each object of either model; the roots are the first.
    void addObjects() {
        std::vector<VEX_HANDLE> const pairs = pairObjects(m_before.model, m_after.model);
        for (std::size_t number = 0; number < m_after.model.elementCount(); ++number) {
            VEX_HANDLE const object = m_after.model.getElement(number);
            add(pairs[number], object, placeOf(m_after.model, m_placeAfter, object));
        }
        for (std::size_t number = 0; number < m_before.model.elementCount(); ++number) {
            VEX_HANDLE const object = m_before.model.getElement(number);
            if (m_placeBefore[number] == ComparedObject::NoContainer) {
                add(object, {}, placeOf(m_before.model, m_placeBefore, object));
            }
        }
    }

    using Places = std::vector<std::size_t>; // by the number of the object

    /// The place of what an object stands in; the root stands in nothing.
    static std::size_t placeOf(Model const& model, Places const& places, VEX_HANDLE object) {
        VEX_HANDLE const container = VexObject(object).GetParent();
        return container.IsNotNull() ? places[numberOf(model, container)]
                                     : ComparedObject::NoContainer;
    }

    void add(VEX_HANDLE before, VEX_HANDLE after, std::size_t container) {
        std::size_t const place = m_objects.size();
        Budget::charge();
        Budget::chargeBytes(sizeof(ComparedObject));
        ComparedObject& object = m_objects.emplace_back();
        object.before = before;
        object.after = after;
        object.container = container;
        if (before.IsNotNull()) {
            m_placeBefore[numberOf(m_before.model, before)] = place;
        }
        if (after.IsNotNull()) {
            m_placeAfter[numberOf(m_after.model, after)] = place;
        }
    }

    void compare(ComparedObject& object) const {
        using Change = ComparedObject::Change;
        Budget::charge();
        object.presenceBefore = m_presencesBefore.of(object.before);
        object.presenceAfter = m_presencesAfter.of(object.after);
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
        for (PropertyChange const& change : object.properties) {
            Budget::chargeBytes(sizeof change + bytesOf(change.before) + bytesOf(change.after));
        }
    }

    /// What only a further language shows.
    void compareIn(Language const& language, ComparedObject& object) const {
        I18NString const suffix = I18NString(" (").append(language.before.getName()).append(")");
        Presence const was = language.presencesBefore.of(object.before);
        Presence const is = language.presencesAfter.of(object.after);
        if (was != is) {
            object.properties.push_back(
                {I18NString("shown").append(suffix), wordOf(was), wordOf(is)});
        }
        if (was == Presence::None || is == Presence::None) {
            return;
        }
        for (SharedProperty const& property : propertiesOf(object.before, object.after)) {
            auto const [before, after] =
                valuesOf(object, property, language.before, language.after);
            if (before == after) {
                continue;
            }
            BothValues const first = valuesOf(object, property, m_before.locale, m_after.locale);
            if (before != first.before || after != first.after) {
                object.properties.push_back(
                    {I18NString(property.name).append(suffix), before, after});
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
        for (SharedProperty const& property : propertiesOf(object.before, object.after)) {
            BothValues values = valuesOf(object, property, m_before.locale, m_after.locale);
            note(property.name, std::move(values.before), std::move(values.after));
        }
        if (placeOf(m_before.model, m_placeBefore, object.before) !=
            placeOf(m_after.model, m_placeAfter, object.after)) {
            note("container", keyOf(m_before.model, VexObject(object.before).GetParent()),
                 keyOf(m_after.model, VexObject(object.after).GetParent()));
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

Presences::Presences(Model const& model, AnsweredTree const& trees)
    : m_model(&model), m_presences(model.elementCount(), Presence::None) {
    for (AnsweredObject const& entry : trees) {
        if (entry.fate == ObjectFate::Written) {
            Presence& presence = m_presences[numberOf(model, entry.object)];
            presence = std::max(presence, entry.behindShortcut ? Presence::BehindShortcuts
                                                               : Presence::InItsPlace);
        }
    }
}

Presence Presences::of(VEX_HANDLE object) const {
    std::size_t const number = numberOf(*m_model, object);
    return number < m_presences.size() ? m_presences[number] : Presence::None;
}

bool ComparedObject::isRenamed() const {
    return std::any_of(properties.begin(), properties.end(), [](PropertyChange const& each) {
        return each.property == nameProperty || each.property.find("name (") == 0;
    });
}

std::vector<ComparedObject> compareTrees(ComparedSide const& before, ComparedSide const& after) {
    return TreeComparison(before, after).differences();
}

} // namespace vex
