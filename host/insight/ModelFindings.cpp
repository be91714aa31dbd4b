#include "host/insight/ModelFindings.h"

#include "VexObject.h"
#include "host/insight/ObjectReference.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/ShortText.h"
#include "resources.h"

namespace vex {

std::string inQuotes(I18NString const& text) {
    return '"' + shortened(text.view()) + '"';
}

constexpr std::size_t mostOfAList = 20;

void addToShortList(std::string& list, std::size_t& count, std::string const& entry) {
    if (++count <= mostOfAList) {
        list += (list.empty() ? "" : ", ") + entry;
    }
}

void endShortList(std::string& list, std::size_t count) {
    if (count > mostOfAList) {
        list += " and " + std::to_string(count - mostOfAList) + " more";
    }
}

void ModelFindings::addKept(RuleName rule, VEX_HANDLE element, std::string text) {
    DocumentPosition const at = m_model.findPosition(element).value_or(DocumentPosition{});
    if (PolicyView const* const view = at.line == 0 ? findPolicyView(element) : nullptr) {
        m_found.push_back(
            finding(rule, m_policy->file, view->place.line, view->place.column, std::move(text)));
        return;
    }
    m_found.push_back(finding(rule, m_file, at.line, at.column, std::move(text)));
}

/// The one that an element is, or is part of; null without one.
PolicyView const* ModelFindings::findPolicyView(VEX_HANDLE element) const {
    if (m_policy == nullptr) {
        return nullptr;
    }
    for (VEX_HANDLE at = element; at.IsNotNull(); at = VexObject(at).GetParent()) {
        I18NString id;
        VexObject(at).GetId(id);
        PolicyView const* const view = id.empty() ? nullptr : m_policy->findView(id);
        if (view != nullptr) {
            return view;
        }
    }
    return nullptr;
}

Vex_Handle_Collection ModelFindings::elementsOf(I18NString const& tag) const {
    return elementsBelow(m_model.GetRootObject(), tag);
}

Vex_Handle_Collection ModelFindings::elementsBelow(VEX_HANDLE element, I18NString const& tag) {
    Vex_Handle_Collection found;
    VexObject(element).getElementsByTagName(tag, found);
    return found;
}

I18NString ModelFindings::valueOf(VEX_HANDLE element, I18NString const& property,
                                  I18NLocale const* locale) {
    I18NString value;
    VexObject(VexObject(element).GetPropertyByName(property, locale)).GetValue(value, true);
    return value;
}

std::string ModelFindings::nameOf(VEX_HANDLE element) const {
    return inQuotes(
        valueOf(element, resources::getString(resources::Name), &m_model.defaultLocale()));
}

std::string ModelFindings::describe(VEX_HANDLE element) const {
    I18NString text = boundedReferenceOf(m_model, element);
    if (!text.empty()) {
        return shortened(text.view());
    }
    if (VexObject(element).GetId(text)) {
        return inQuotes(text);
    }
    VexObject(element).GetName(text);
    return text.toUtf8();
}

} // namespace vex
