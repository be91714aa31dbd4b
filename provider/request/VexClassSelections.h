#pragma once

#include "I18NString.h"

#include <list>
#include <optional>
#include <unordered_map>
#include <vector>

class VexMDMaProviderHelper;

/// A property that a request names.
struct VexSelectedProperty {
    enum class Kind { Path, Reference, Name, ScreenText, Plain };

    explicit VexSelectedProperty(I18NString const& requested);

    I18NString name;
    Kind kind;
    bool isXmlName; // false: no attribute can bear the name, so none is written
};

/// The properties that a request selects for a class.
struct VexPropertySelection {
    explicit VexPropertySelection(std::list<I18NString> const& names);

    std::vector<VexSelectedProperty> properties;
    bool all;     // "*" is all that is named: every attribute of the object
    bool hasPath; // "_path" is among them
    bool hasReference;
};

/// The collections that a request selects for a class.
struct VexCollectionSelection {
    explicit VexCollectionSelection(std::list<I18NString> const& requested);

    std::list<I18NString> names;
    bool all; // "*" is all that the request names: every collection of the object
};

/// What a request selects, worked out once for each class that the tree meets; where these
/// are many, once for all those that the request does not name. Depends on the request alone,
/// and lives no longer.
class VexClassSelections {
public:
    explicit VexClassSelections(VexMDMaProviderHelper const& helper) : m_helper(helper) {}

    /// The names can be handed to the object model, which takes them by
    /// reference and leaves them as they are.
    VexPropertySelection& propertiesOf(I18NString const& className);
    VexCollectionSelection const& collectionsOf(I18NString const& className);

private:
    /// What one kind of requests selects.
    template <class Selection> struct Known {
        std::unordered_map<I18NString, Selection> byClass;
        std::optional<Selection> ofOthers; // made when there are many
    };
    template <class Selection, class Read>
    Selection& selectionOf(Known<Selection>& known, I18NString const& className, Read const& read);

    VexMDMaProviderHelper const& m_helper;
    Known<VexPropertySelection> m_properties;
    Known<VexCollectionSelection> m_collections;
};
