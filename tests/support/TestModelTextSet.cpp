// The sets of texts of a test's model: looked for in the plainest way.

#include "tests/support/TestModel.h"

#include <set>

namespace {

class TestTextSet final : public VexTextSet {
public:
    TestTextSet(std::set<I18NString> texts, CallCounter& calls)
        : m_texts(std::move(texts)), m_calls(calls) {}

    bool contains(I18NString const& text) const override {
        m_calls.note(Call::AskTextSet);
        return m_texts.contains(text);
    }
    std::size_t size() const override {
        m_calls.note(Call::AskTextSet);
        return m_texts.size();
    }
    void appendTo(std::vector<std::u16string_view>& texts) const override {
        m_calls.note(Call::AskTextSet);
        for (I18NString const& text : m_texts) {
            texts.push_back(text.view());
        }
    }

private:
    std::set<I18NString> m_texts;
    CallCounter& m_calls;
};

bool isBelow(TestNode const* node, TestNode const* top) {
    while (node != nullptr && node != top) {
        node = node->parent;
    }
    return node == top;
}

} // namespace

std::shared_ptr<VexTextSet const>
TestModel::FindTextSet(VEX_HANDLE object, I18NString const& within, I18NString const& name,
                       I18NString const& text, I18NString const& tag) const {
    if (!m_offersTextSets) {
        return nullptr;
    }
    m_calls.note(Call::FindTextSet);
    TestNode const* const top = nodeOf(object);
    if (!top->valid || top->kind != TestNode::Kind::Element) {
        return nullptr;
    }
    auto const isWithin = [&](TestNode const* holder) {
        if (holder->kind != TestNode::Kind::Element || holder->name != within || holder == top ||
            !isBelow(holder, top)) {
            return false;
        }
        TestNode const* const property = findProperty(*holder, name, nullptr);
        return property != nullptr && property->value == text;
    };
    std::set<I18NString> texts;
    for (auto const& node : m_nodes) {
        if (node->kind != TestNode::Kind::Element || node->name != tag || node.get() == top) {
            continue;
        }
        for (TestNode const* above = node->parent; above != nullptr; above = above->parent) {
            if (isWithin(above)) {
                texts.insert(node->value.value_or(I18NString()));
                break;
            }
        }
    }
    return std::make_shared<TestTextSet>(std::move(texts), m_calls);
}
