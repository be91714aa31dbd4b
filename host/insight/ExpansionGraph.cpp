#include "host/insight/ExpansionGraph.h"

#include "VexObject.h"
#include "resources.h"

namespace vex {

namespace {
constexpr char const* edgeProperty = "refobj";
} // namespace

ExpansionGraph::ExpansionGraph(Model const& model)
    : m_model(model), m_children(model.elementCount()) {
    std::unordered_map<VEX_HANDLE, Number> numbers;
    numbers.reserve(model.elementCount());
    for (Number number = 0; number < model.elementCount(); ++number) {
        VEX_HANDLE const element = model.getElement(number);
        numbers.emplace(element, number);
        auto const parent = numbers.find(VexObject(element).GetParent());
        if (parent != numbers.end()) {
            m_children[parent->second].push_back(number);
        }
    }
    Vex_Handle_Collection found;
    VexObject(model.GetRootObject())
        .getElementsByTagName(resources::getString(resources::Shortcut), found);
    I18NString const name(edgeProperty);
    for (VEX_HANDLE const element : found) {
        Shortcut shortcut{numbers.at(element), {}};
        Vex_Handle_Collection properties;
        VexObject(element).Properties(properties, &name, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            I18NString reference;
            VexObject(property).GetValue(reference, true);
            auto const target = numbers.find(model.GetObjectByReference(reference, 0));
            if (target != numbers.end()) {
                shortcut.targets.push_back(target->second);
            }
        }
        if (!shortcut.targets.empty()) {
            m_shortcutPlaces.emplace(shortcut.number, m_shortcuts.size());
            m_shortcuts.push_back(std::move(shortcut));
        }
    }
}

ExpansionGraph::Shortcut const* ExpansionGraph::findShortcut(Number number) const {
    auto const place = m_shortcutPlaces.find(number);
    return place == m_shortcutPlaces.end() ? nullptr : &m_shortcuts[place->second];
}

std::size_t ExpansionGraph::wayCount(Number number) const {
    Shortcut const* const shortcut = findShortcut(number);
    return m_children[number].size() + (shortcut == nullptr ? 0 : shortcut->targets.size());
}

ExpansionGraph::Number ExpansionGraph::way(Number number, std::size_t index) const {
    std::vector<Number> const& children = m_children[number];
    return index < children.size() ? children[index]
                                   : findShortcut(number)->targets[index - children.size()];
}

} // namespace vex
