#include "provider/request/VexClassSelections.h"

#include "KRLIDOM_Helper.h"
#include "provider/VexConstants.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/request/VexRequestedNames.h"
#include "resources.h"

#include <algorithm>

namespace {

VexSelectedProperty::Kind kindOf(I18NString const& name) {
    using Kind = VexSelectedProperty::Kind;
    if (name == "_path") {
        return Kind::Path;
    }
    if (name == "_ref") {
        return Kind::Reference;
    }
    if (name == resources::getString(resources::Name)) {
        return Kind::Name;
    }
    return name == "screenTip" || name == "description" ? Kind::ScreenText : Kind::Plain;
}

bool hasKind(std::vector<VexSelectedProperty> const& properties, VexSelectedProperty::Kind kind) {
    return std::any_of(properties.begin(), properties.end(),
                       [kind](auto const& property) { return property.kind == kind; });
}

} // namespace

VexSelectedProperty::VexSelectedProperty(I18NString const& requested)
    : name(requested), kind(kindOf(requested)), isXmlName(KRLIDOM_Helper::isName(requested)) {}

VexPropertySelection::VexPropertySelection(std::list<I18NString> const& names)
    : properties(names.begin(), names.end()), all(IsWildcardForProperties(names)),
      hasPath(hasKind(properties, VexSelectedProperty::Kind::Path)),
      hasReference(hasKind(properties, VexSelectedProperty::Kind::Reference)) {}

VexCollectionSelection::VexCollectionSelection(std::list<I18NString> const& requested)
    : names(requested), all(IsWildcardForCollections(requested)) {}

template <class Selection, class Read>
Selection& VexClassSelections::selectionOf(Known<Selection>& known, I18NString const& className,
                                           Read const& read) {
    constexpr std::size_t fewClasses = 64;
    auto const found = known.byClass.find(className);
    if (found != known.byClass.end()) {
        return found->second;
    }
    auto const make = [&read] {
        std::list<I18NString> names;
        read(names);
        return Selection(names);
    };
    if (known.byClass.size() >= fewClasses && !m_helper.MayNameClass(className)) {
        return known.ofOthers ? *known.ofOthers : known.ofOthers.emplace(make());
    }
    return known.byClass.emplace(className, make()).first->second;
}

VexPropertySelection& VexClassSelections::propertiesOf(I18NString const& className) {
    return selectionOf(m_properties, className, [&](std::list<I18NString>& names) {
        m_helper.GetPropertiesForClass(className, names);
    });
}

VexCollectionSelection const& VexClassSelections::collectionsOf(I18NString const& className) {
    return selectionOf(m_collections, className, [&](std::list<I18NString>& names) {
        m_helper.GetCollectionsForClass(className, names);
    });
}
