#pragma once

#include "host/import/draft/ImportWork.h"
#include "host/import/odata/CsdlModel.h"
#include "host/import/xml/ElementTree.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// An element of a service description, read attribute by attribute. What a reader asks for
/// is told to the account as mapped, "Property.Type"; the rest as left out by
/// `leaveOutRest`.
class CsdlElement {
public:
    CsdlElement(ElementTree const& tree, ElementTree::Element element, ImportWork& work);

    std::string_view kind() const { return m_tree.nameOf(m_element); }
    DocumentPosition position() const { return m_tree.positionOf(m_element); }
    ElementTree const& tree() const { return m_tree; }
    ElementTree::Element element() const { return m_element; }

    /// From here on nothing is told: the element itself was told as left out.
    void tellNothing() { m_isTold = false; }
    void tellMapped() const { m_work.account.mapped(kind()); }
    void tellLeftOut(std::string_view reason, std::string name) const;

    /// Nothing when the attribute is missing.
    std::optional<std::string_view> attribute(std::string_view name);
    /// An attribute that the element must have; it is refused without it.
    std::string_view required(std::string_view name);
    /// A required name, which is not longer than the format allows.
    std::string name(std::string_view attribute = "Name");
    /// "true" or "false"; anything else is refused.
    bool isTrue(std::string_view attribute, bool without);

    /// Takes each attribute that stands for a property of a model.
    void say(CsdlSaid& said);
    /// Tells of each attribute that was not asked for.
    void leaveOutRest(std::string_view nameOfThing);

    /// What stands inside, in its order.
    std::vector<ElementTree::Element> inside() const;
    /// Tells of an element inside that nothing asks for, with all that stands in it.
    void leaveOut(ElementTree::Element inside, std::string_view nameOfThing) const;

    [[noreturn]] void refuse(std::string text) const { m_work.refuse(std::move(text), position()); }

private:
    ElementTree const& m_tree;
    ElementTree::Element m_element;
    ImportWork& m_work;
    bool m_isTold = true;
    std::vector<bool> m_taken;
};

/// True for an element of the given name in the namespace of service descriptions.
bool isCsdl(ElementTree const& tree, ElementTree::Element element, std::string_view name);

/// The text in quotes, for messages.
std::string quotedName(std::string_view name);

} // namespace vex
