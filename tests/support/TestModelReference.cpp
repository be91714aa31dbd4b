#include "tests/support/TestModel.h"

namespace {

// The names in "[a].[b]", blanks around brackets and dots allowed, "]]" for "]"
// inside a name; nothing when the text is something else.
std::vector<I18NString> splitReference(std::u16string_view text) {
    enum class State { BeforeName, InName, AfterName } state = State::BeforeName;
    std::vector<I18NString> names;
    for (std::size_t at = 0; at < text.size(); ++at) {
        char16_t const unit = text[at];
        if (state == State::InName) {
            if (unit != u']') {
                names.back().append(unit);
            } else if (at + 1 < text.size() && text[at + 1] == u']') {
                names.back().append(unit);
                ++at;
            } else {
                state = State::AfterName;
            }
        } else if (unit == u'[' && state == State::BeforeName) {
            names.emplace_back();
            state = State::InName;
        } else if (unit == u'.' && state == State::AfterName) {
            state = State::BeforeName;
        } else if (unit != u' ' && unit != u'\t' && unit != u'\n') {
            return {};
        }
    }
    return state == State::AfterName ? names : std::vector<I18NString>();
}

} // namespace

VEX_HANDLE TestModel::GetRootObject() const {
    m_calls.note(Call::GetRootObject);
    return handleOf(m_nodes[0].get());
}

VEX_HANDLE TestModel::GetObjectByReference(I18NString const& reference, long scope) const {
    m_calls.note(Call::GetObjectByReference);
    std::vector<I18NString> const names = splitReference(reference.view());
    if (names.empty() || scope != 0) {
        return {};
    }
    for (auto const& node : m_nodes) {
        if (node->kind == TestNode::Kind::Element && hasReference(*node, names)) {
            return handleOf(node.get());
        }
    }
    return {};
}

bool TestModel::hasReference(TestNode const& element, std::vector<I18NString> const& names) const {
    std::vector<I18NString> reference{nameOf(element)};
    TestNode const* node = &element;
    while (node->name != "namespace") {
        node = node->parent;
        if (node == nullptr) {
            return false;
        }
        if (node->name != "folder" && node->name != "queryItemFolder") {
            reference.insert(reference.begin(), nameOf(*node));
        }
    }
    return reference == names;
}

I18NString TestModel::nameOf(TestNode const& element) const {
    TestNode const* const name = findProperty(element, "name", &m_defaultLocale);
    return name != nullptr ? name->value.value_or(I18NString()) : I18NString();
}
