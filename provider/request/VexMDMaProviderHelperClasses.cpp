// What a request means for one class of objects.

#include "model/VexClassNames.h"
#include "provider/VexConstants.h"
#include "provider/request/VexMDMaProviderHelper.h"

namespace {

constexpr char16_t wildcard = u'*';

} // namespace

void VexMDMaProviderHelper::GetPropertiesForClass(I18NString const& className,
                                                  std::list<I18NString>& result) const {
    result.clear();
    ProcessPrefix(m_attributeRequests.about("."), "./@", result);
    ProcessPrefix(m_attributeRequests.about("*"), "*/@", result);
    ProcessPrefix(m_attributeRequests.about(className), className + "/@", result);
}

void VexMDMaProviderHelper::GetCollectionsForClass(I18NString const& className,
                                                   std::list<I18NString>& result) const {
    result.clear();
    ProcessPrefix(m_collectionRequests.about("."), "./", result);
    ProcessPrefix(m_collectionRequests.about("*"), "*/", result);
    ProcessPrefix(m_collectionRequests.about(className), className + "/", result);
    // quirk: shortcut-and-namespace-always-walked
    result.emplace_back(VexClass::Shortcut);
    result.emplace_back(VexClass::Namespace);
}

void VexMDMaProviderHelper::GetConstraintsForClass(I18NString const& className,
                                                   std::map<I18NString, I18NString>& result) const {
    result.clear();
    ProcessConstraintPrefix(m_constraints, ".", result);
    ProcessConstraintPrefix(m_constraints, "*", result);
    ProcessConstraintPrefix(m_constraints, className, result);
}

void VexMDMaProviderHelper::ProcessPrefix(std::list<I18NString> const& source,
                                          I18NString const& prefix,
                                          std::list<I18NString>& result) const {
    std::list<I18NString> names;
    for (I18NString const& entry : source) {
        if (entry.find(prefix) != 0) {
            continue;
        }
        I18NString rest = entry.substring(prefix.length(), -1);
        bool const all = !rest.empty() && rest[0] == wildcard;
        if (all) {
            names.clear();
        }
        names.push_back(std::move(rest));
        if (all) {
            break;
        }
    }
    result.splice(result.end(), names);
}

void VexMDMaProviderHelper::ProcessConstraintPrefix(
    std::map<I18NString, I18NString> const& source, I18NString const& prefix,
    std::map<I18NString, I18NString>& result) const {
    constexpr int separator = 2; // "/@"; whatever stands there is dropped
    std::map<I18NString, I18NString> constraints;
    for (auto const& [key, value] : source) {
        if (key.find(prefix) != 0) {
            continue;
        }
        I18NString rest = key.substring(prefix.length() + separator, -1);
        bool const all = !rest.empty() && rest[0] == wildcard;
        if (all) {
            constraints.clear();
        }
        constraints.emplace(std::move(rest), value);
        if (all) {
            break;
        }
    }
    result.merge(constraints); // keeps the values of keys that are there
}
