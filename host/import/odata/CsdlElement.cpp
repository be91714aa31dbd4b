#include "host/import/odata/CsdlElement.h"

#include "I18NString.h"
#include "host/import/odata/CsdlTables.h"

namespace vex {

namespace {

constexpr std::size_t longestName = 512; // a namespace; the format allows no more

char const* whyUnknown(ElementTree const& tree, ElementTree::Element element) {
    return tree.spaceOf(element) == csdlSpace ? csdlReasons::Unknown : csdlReasons::OtherSpace;
}

} // namespace

bool isCsdl(ElementTree const& tree, ElementTree::Element element, std::string_view name) {
    return tree.nameOf(element) == name && tree.spaceOf(element) == csdlSpace;
}

std::string quotedName(std::string_view name) {
    return inQuotes(I18NString::fromUtf8(name).view());
}

CsdlElement::CsdlElement(ElementTree const& tree, ElementTree::Element element, ImportWork& work)
    : m_tree(tree), m_element(element), m_work(work), m_taken(tree.attributeCount(element)) {}

void CsdlElement::tellLeftOut(std::string_view reason, std::string name) const {
    m_work.account.leftOut(kind(), reason, {std::move(name), position()});
}

std::optional<std::string_view> CsdlElement::attribute(std::string_view name) {
    for (std::size_t each = 0; each < m_taken.size(); ++each) {
        auto const [found, value] = m_tree.attributeOf(m_element, each);
        if (found == name) {
            if (m_isTold && !m_taken[each]) {
                m_work.account.mapped(std::string(kind()) + '.' + std::string(name));
            }
            m_taken[each] = true;
            return value;
        }
    }
    return std::nullopt;
}

std::string_view CsdlElement::required(std::string_view name) {
    auto const value = attribute(name);
    if (!value || value->empty()) {
        refuse("the element " + quotedName(kind()) + " has no " + std::string(name) +
               "; give it one");
    }
    return *value;
}

std::string CsdlElement::name(std::string_view attribute) {
    std::string_view const name = required(attribute);
    if (name.size() > longestName) {
        refuse("the " + std::string(attribute) + " has more than " + std::to_string(longestName) +
               " bytes; shorten it");
    }
    return std::string(name);
}

bool CsdlElement::isTrue(std::string_view name, bool without) {
    auto const value = attribute(name);
    if (value && *value != "true" && *value != "false") {
        refuse("the attribute " + std::string(name) + " is " + quotedName(*value) +
               "; write true or false");
    }
    return value ? *value == "true" : without;
}

void CsdlElement::say(CsdlSaid& said) {
    for (CsdlAttribute const& row : csdlAttributes()) {
        if (row.property != nullptr && row.element == kind()) {
            if (auto const value = attribute(row.attribute); value && !value->empty()) {
                said.say(row.property, std::string(*value));
            }
        }
    }
}

void CsdlElement::leaveOutRest(std::string_view nameOfThing) {
    if (!m_isTold) {
        return;
    }
    for (std::size_t each = 0; each < m_taken.size(); ++each) {
        if (m_taken[each]) {
            continue;
        }
        auto const [name, value] = m_tree.attributeOf(m_element, each);
        char const* reason = csdlReasons::Unknown;
        for (CsdlAttribute const& row : csdlAttributes()) {
            if (row.property == nullptr && row.attribute == name &&
                (row.element == kind() || row.element.empty())) {
                reason = row.reason;
            }
        }
        m_work.account.leftOut(std::string(kind()) + '.' + std::string(name), reason,
                               {std::string(nameOfThing), position()});
    }
}

std::vector<ElementTree::Element> CsdlElement::inside() const {
    std::vector<ElementTree::Element> found;
    for (auto each = m_tree.first(m_element); each != ElementTree::None; each = m_tree.next(each)) {
        found.push_back(each);
    }
    return found;
}

void CsdlElement::leaveOut(ElementTree::Element inside, std::string_view nameOfThing) const {
    char const* reason = whyUnknown(m_tree, inside);
    for (CsdlOmission const& row : csdlOmissions()) {
        if (isCsdl(m_tree, inside, row.element)) {
            reason = row.reason;
        }
    }
    auto const name = m_tree.find(inside, "Name");
    m_work.account.leftOut(m_tree.nameOf(inside), reason,
                           {std::string(name.value_or(nameOfThing)), m_tree.positionOf(inside)});
}

} // namespace vex
