#include "tests/support/TestModel.h"

#include "tests/support/TestModelReader.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace {

template <class Give> bool give(std::optional<I18NString> const& from, Give& to) {
    if (from.has_value()) {
        to = *from;
    }
    return from.has_value();
}

bool passes(TestNode const& node, I18NString const* name, I18NString const* role) {
    return (name == nullptr || node.name == *name) && (role == nullptr || node.role == *role);
}

std::vector<TestNode*> valuesNamed(TestNode const& owner, I18NString const& name) {
    std::vector<TestNode*> values;
    std::copy_if(owner.properties.begin(), owner.properties.end(), std::back_inserter(values),
                 [&](TestNode* value) { return value->name == name; });
    return values;
}

TestNode* valueIn(std::vector<TestNode*> const& values, std::optional<I18NLocale> const& locale) {
    auto const found = std::find_if(values.begin(), values.end(),
                                    [&](TestNode* value) { return value->locale == locale; });
    return found != values.end() ? *found : nullptr;
}

bool isBelow(TestNode const* node, TestNode const* top) {
    for (node = node->parent; node != nullptr; node = node->parent) {
        if (node == top) {
            return true;
        }
    }
    return false;
}

} // namespace

TestModel::TestModel(std::string_view xml) : m_nodes(readTestModel(xml)) {
    TestNode const* const locale = valueIn(valuesNamed(*m_nodes[0], "defaultLocale"), {});
    m_defaultLocale = I18NLocale(locale != nullptr ? locale->value.value_or("en_US") : "en_US");
    TakeHandles(static_cast<std::uint32_t>(m_nodes.size()));
}

TestModel::~TestModel() = default;

VEX_HANDLE TestModel::byId(char const* id) const {
    for (auto const& node : m_nodes) {
        if (node->kind == TestNode::Kind::Element && node->id == I18NString(id)) {
            return handleOf(node.get());
        }
    }
    throw std::invalid_argument(std::string("the test model has no element ") + id);
}

Vex_Handle_Collection TestModel::byIds(std::initializer_list<char const*> ids) const {
    Vex_Handle_Collection found;
    for (char const* const id : ids) {
        found.push_back(byId(id));
    }
    return found;
}

VEX_HANDLE TestModel::property(VEX_HANDLE object, char const* name) const {
    TestNode const* const found = findProperty(*nodeOf(object), name, nullptr);
    if (found == nullptr) {
        throw std::invalid_argument(std::string("the object has no property ") + name);
    }
    return handleOf(found);
}

void TestModel::invalidate(VEX_HANDLE object) {
    nodeOf(object)->valid = false;
}

void TestModel::setClass(VEX_HANDLE element, char const* className) {
    nodeOf(element)->name = className;
}

TestNode* TestModel::nodeOf(VEX_HANDLE object) const {
    return m_nodes[object.Number() - FirstHandle()].get();
}

VEX_HANDLE TestModel::handleOf(TestNode const* node) const {
    return node != nullptr ? VEX_HANDLE(FirstHandle() + node->number) : VEX_HANDLE();
}

bool TestModel::IsObject(VEX_HANDLE object) const {
    m_calls.note(Call::IsObject);
    return Holds(object) && nodeOf(object)->valid;
}

bool TestModel::GetId(VEX_HANDLE object, I18NString& id) const {
    m_calls.note(Call::GetId);
    return give(nodeOf(object)->id, id);
}

bool TestModel::GetName(VEX_HANDLE object, I18NString& name) const {
    m_calls.note(Call::GetName);
    name = nodeOf(object)->name;
    return true;
}

bool TestModel::GetClass(VEX_HANDLE object, I18NString& name) const {
    m_calls.note(Call::GetClass);
    return give(nodeOf(object)->ownClass, name);
}

bool TestModel::GetRole(VEX_HANDLE object, I18NString& role) const {
    m_calls.note(Call::GetRole);
    return give(nodeOf(object)->role, role);
}

bool TestModel::GetValue(VEX_HANDLE object, I18NString& value, bool resolve) const {
    m_calls.note(Call::GetValue);
    m_lastResolve = resolve;
    return give(nodeOf(object)->value, value);
}

I18NLocale const* TestModel::GetLocale(VEX_HANDLE object) const {
    m_calls.note(Call::GetLocale);
    TestNode const& node = *nodeOf(object);
    if (node.kind == TestNode::Kind::Element) {
        return &m_defaultLocale;
    }
    return node.locale.has_value() ? &*node.locale : nullptr;
}

VEX_HANDLE TestModel::GetParent(VEX_HANDLE object) const {
    m_calls.note(Call::GetParent);
    return handleOf(nodeOf(object)->parent);
}

VEX_HANDLE TestModel::GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                        I18NLocale const* locale) const {
    m_calls.note(Call::GetPropertyByName);
    TestNode const& node = *nodeOf(object);
    return node.valid ? handleOf(findProperty(node, name, locale)) : VEX_HANDLE();
}

VEX_HANDLE TestModel::GetPropertyByRole(VEX_HANDLE object, I18NString const& role,
                                        I18NLocale const* locale) const {
    m_calls.note(Call::GetPropertyByRole);
    TestNode const& node = *nodeOf(object);
    if (!node.valid) {
        return {};
    }
    auto const found =
        std::find_if(node.properties.begin(), node.properties.end(),
                     [&](TestNode* value) { return passes(*value, nullptr, &role); });
    return found != node.properties.end() ? handleOf(findProperty(node, (*found)->name, locale))
                                          : VEX_HANDLE();
}

bool TestModel::Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                           I18NString const* role) const {
    m_calls.note(Call::Properties);
    TestNode const& node = *nodeOf(object);
    std::vector<TestNode const*> listed;
    for (TestNode const* const value : node.properties) {
        std::vector<TestNode*> const values = valuesNamed(node, value->name);
        if (!value->locale.has_value()) {
            listed.push_back(value);
        } else if (valueIn(values, {}) == nullptr && value == values.front()) {
            listed.push_back(chooseValue(values, nullptr));
        }
    }
    listed.insert(listed.end(), node.collections.begin(), node.collections.end());
    std::size_t const before = found.size();
    for (TestNode const* const property : listed) {
        if (passes(*property, name, role)) {
            found.push_back(handleOf(property));
        }
    }
    return found.size() > before;
}

bool TestModel::childObjects(VEX_HANDLE object, Vex_Handle_Collection& found,
                             I18NString const* name, I18NString const* role) const {
    m_calls.note(Call::ChildObjects);
    std::size_t const before = found.size();
    for (TestNode const* const child : nodeOf(object)->children) {
        if (passes(*child, name, role)) {
            found.push_back(handleOf(child));
        }
    }
    return found.size() > before;
}

bool TestModel::getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                                     Vex_Handle_Collection& found) const {
    m_calls.note(Call::GetElementsByTagName);
    TestNode const* const top = nodeOf(object);
    std::size_t const before = found.size();
    if (top->kind == TestNode::Kind::Element) {
        for (auto const& node : m_nodes) {
            if (node->kind == TestNode::Kind::Element && node->name == tag &&
                isBelow(node.get(), top)) {
                found.push_back(handleOf(node.get()));
            }
        }
    }
    return found.size() > before;
}

bool TestModel::hasChildObjects(VEX_HANDLE object) const {
    m_calls.note(Call::HasChildObjects);
    return !nodeOf(object)->children.empty();
}

bool TestModel::hasProperties(VEX_HANDLE object) const {
    m_calls.note(Call::HasProperties);
    return !nodeOf(object)->properties.empty() || !nodeOf(object)->collections.empty();
}

TestNode const* TestModel::findProperty(TestNode const& owner, I18NString const& name,
                                        I18NLocale const* locale) const {
    if (name == "ID" && owner.kind == TestNode::Kind::Element) {
        return owner.idProperty;
    }
    std::vector<TestNode*> const values = valuesNamed(owner, name);
    if (!values.empty()) {
        return chooseValue(values, locale);
    }
    auto const found = std::find_if(owner.collections.begin(), owner.collections.end(),
                                    [&](TestNode* node) { return node->name == name; });
    return found != owner.collections.end() ? *found : nullptr;
}

TestNode const* TestModel::chooseValue(std::vector<TestNode*> const& values,
                                       I18NLocale const* locale) const {
    TestNode const* const unlocalised = valueIn(values, {});
    if (locale == nullptr) {
        TestNode const* const usual = valueIn(values, m_defaultLocale);
        return unlocalised != nullptr ? unlocalised : usual != nullptr ? usual : values.front();
    }
    for (I18NLocale tried = *locale; !tried.getName().empty(); tried = tried.getParent()) {
        if (TestNode const* const value = valueIn(values, tried)) {
            return value;
        }
    }
    return unlocalised;
}
