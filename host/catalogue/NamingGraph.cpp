#include "host/catalogue/NamingGraph.h"

#include "host/store/image/TextReferences.h"

#include <algorithm>

namespace vex {

NamingGraph::NamingGraph(WrittenModel& model, PolicySteps& steps)
    : m_model(model), m_steps(steps), m_namespace(model.nameNumberOf(u"namespace")),
      m_folder(model.nameNumberOf(u"folder")),
      m_queryItemFolder(model.nameNumberOf(u"queryItemFolder")),
      m_securityViews(model.nameNumberOf(u"securityViews")),
      m_properties{model.nameNumberOf(u"expression"), model.nameNumberOf(u"left"),
                   model.nameNumberOf(u"right"), model.nameNumberOf(u"refobj")} {
    for (ElementNumber element = 1; element < model.elementCount(); ++element) {
        if (model.classOf(element) == m_securityViews) {
            element = model.end(element) - 1;
        } else {
            readElement(element);
        }
    }
    resolve();
}

void NamingGraph::readElement(ElementNumber element) {
    Shape const shape = m_model.shape(m_model.shapeNumber(element));
    for (std::uint32_t offset = shape.ownCount; offset < shape.entryCount; ++offset) {
        if (m_properties.contains(m_model.entries(shape)[offset].name)) {
            readText(element, m_model.text(m_model.value(element, offset)));
        }
    }
}

void NamingGraph::readText(ElementNumber element, std::u16string_view text) {
    I18NString const held(text);
    TextReferences references(held);
    while (TextReference const* const reference = references.next()) {
        Names names;
        TextRef const before =
            reference->before().empty() ? 0 : m_model.numberOf(reference->before());
        if (before != 0 && isName(before)) { // else a function or an operator
            names.push_back(before);
        }
        for (std::u16string_view const name : reference->names()) {
            names.push_back(m_model.numberOf(name));
        }
        auto const [at, isNew] = m_chainNumbers.try_emplace(std::move(names), m_chains.size());
        if (isNew) {
            m_chains.push_back({&at->first});
        }
        std::vector<ElementNumber>& readers = m_chains[at->second].readers;
        if (readers.empty() || readers.back() != element) {
            readers.push_back(element);
        }
    }
}

/// True when some element is called so; a function is not.
bool NamingGraph::isName(TextRef text) {
    if (text == NotFound) {
        return false;
    }
    if (m_names.isEmpty()) {
        m_names.clear(m_model.textEnd());
        for (ElementNumber element = 1; element < m_model.elementCount(); ++element) {
            if (m_model.classOf(element) == m_securityViews) {
                element = m_model.end(element) - 1;
            } else if (TextRef const name = m_model.nameOf(element); name != 0) {
                m_names.insert(name);
            }
        }
    }
    return m_names.contains(text);
}

NamingGraph::Names NamingGraph::referenceOf(ElementNumber element) {
    Names names{m_model.nameOf(element)};
    if (m_model.classOf(element) == m_namespace) {
        return names;
    }
    for (ElementNumber at = m_model.parent(element); at != 0; at = m_model.parent(at)) {
        m_steps.spend(1);
        Atom const cls = m_model.classOf(at);
        if (cls != m_folder && cls != m_queryItemFolder) {
            names.push_back(m_model.nameOf(at));
        }
        if (cls == m_namespace) {
            break;
        }
    }
    std::reverse(names.begin(), names.end());
    return names;
}

// The names before the one of `ancestor`, which is the last but one, are those of what
// stands around it, in that order.
bool NamingGraph::fits(Chain const& chain, ElementNumber ancestor) {
    std::size_t left = chain.names->size() - 2;
    for (ElementNumber at = m_model.parent(ancestor); left > 0 && at != 0;
         at = m_model.parent(at)) {
        m_steps.spend(1);
        left -= m_model.nameOf(at) == (*chain.names)[left - 1] ? 1 : 0;
    }
    return left == 0;
}

template <class Take>
void NamingGraph::forEachPartial(ElementNumber element, TextRef name, Take const& take) {
    if (m_partial.empty()) {
        return; // as where all references are whole
    }
    for (ElementNumber at = m_model.parent(element); at != NotFound && at != 0;
         at = m_model.parent(at)) {
        m_steps.spend(1);
        auto const found = m_partial.find(pairOf(m_model.nameOf(at), name));
        if (found == m_partial.end()) {
            continue;
        }
        Bucket& bucket = found->second;
        bool const isCrowded = bucket.chains.size() > ManyChains;
        if (isCrowded && std::exchange(bucket.spread, m_spread) == m_spread) {
            continue;
        }
        for (std::size_t const chain : bucket.chains) {
            if (isCrowded || fits(m_chains[chain], at)) {
                take(chain);
            }
        }
    }
}

void NamingGraph::resolve() {
    m_lastNames.clear(m_model.textEnd());
    for (Chain& chain : m_chains) {
        m_lastNames.insert(chain.names->back());
        if (chain.names->size() == 1) {
            m_alone[chain.names->back()].push_back(m_chainNumbers.at(*chain.names));
            chain.isResolved = true;
        }
    }
    auto const forEachCalled = [&](auto const& take) {
        for (ElementNumber element = 1; element < m_model.elementCount(); ++element) {
            if (m_model.classOf(element) == m_securityViews) {
                element = m_model.end(element) - 1;
            } else if (TextRef const name = m_model.nameOf(element); m_lastNames.contains(name)) {
                take(element, name);
            }
        }
    };
    m_wholeChains.assign(m_model.elementCount(), NotFound);
    forEachCalled([&](ElementNumber element, TextRef) {
        auto const at = m_chainNumbers.find(referenceOf(element));
        if (at != m_chainNumbers.end()) {
            m_chains[at->second].isResolved = true;
            m_wholeChains[element] = static_cast<std::uint32_t>(at->second);
        }
    });
    for (std::size_t number = 0; number < m_chains.size(); ++number) {
        Names const& names = *m_chains[number].names;
        if (!m_chains[number].isResolved) {
            m_partial[pairOf(names[names.size() - 2], names.back())].chains.push_back(number);
        }
    }
    beginSpread();
    forEachCalled([&](ElementNumber element, TextRef name) {
        forEachPartial(element, name,
                       [&](std::size_t chain) { m_chains[chain].isResolved = true; });
    });
    for (std::size_t number = 0; number < m_chains.size(); ++number) {
        if (!m_chains[number].isResolved) {
            for (TextRef const name : *m_chains[number].names) {
                std::vector<std::size_t>& chains = m_unresolved[name];
                if (chains.empty() || chains.back() != number) {
                    chains.push_back(number);
                }
            }
        }
    }
}

void NamingGraph::takeChain(std::size_t chain, std::vector<ElementNumber>& readers) {
    Chain& taken = m_chains[chain];
    if (std::exchange(taken.spread, m_spread) != m_spread) {
        m_steps.spend(taken.readers.size());
        readers.insert(readers.end(), taken.readers.begin(), taken.readers.end());
    }
}

void NamingGraph::findReaders(ElementNumber element, std::vector<ElementNumber>& readers) {
    TextRef const name = m_model.nameOf(element);
    if (name == 0) {
        return;
    }
    auto const takeAll = [&](auto const& chainsByName) {
        auto const at = chainsByName.find(name);
        if (at != chainsByName.end()) {
            for (std::size_t const chain : at->second) {
                takeChain(chain, readers);
            }
        }
    };
    Atom const cls = m_model.classOf(element);
    if (cls != m_namespace && cls != m_folder && cls != m_queryItemFolder) {
        takeAll(m_unresolved); // of containers a path is made, not a value
    }
    if (!m_lastNames.contains(name)) {
        return;
    }
    takeAll(m_alone);
    if (m_wholeChains[element] != NotFound) {
        takeChain(m_wholeChains[element], readers);
    }
    forEachPartial(element, name, [&](std::size_t chain) { takeChain(chain, readers); });
}

} // namespace vex
