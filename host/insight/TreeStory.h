#pragma once

#include "host/insight/AnsweredTree.h"

#include <string>
#include <unordered_map>

namespace vex {

/// How trees treat the objects of a model, in sentences. All that it is made
/// with stays where it is.
class TreeStory {
public:
    TreeStory(I18NLocale const& locale, AnsweredTree const& tree);

    /// What the trees do with an object, a sentence for each way that leads to
    /// it. `isIncluded` is what the accessibility check says.
    std::vector<std::string> treatmentOf(VEX_HANDLE object, bool isIncluded) const;

    /// The entries of an object, in order.
    std::vector<std::size_t> entriesOf(VEX_HANDLE object) const;

private:
    std::string sentence(std::size_t entry, bool isIncluded) const;
    std::string writtenSentence(std::size_t entry, bool isIncluded) const;
    std::string leftOutSentence(std::size_t entry) const;
    std::string outside(VEX_HANDLE object) const;
    /// The ways to an object that trees do not go again; "" when there are none.
    std::string waysNotGone(VEX_HANDLE object) const;
    /// The nearest container that is written, and the nearest shortcut around.
    std::size_t writtenAround(std::size_t entry) const;
    std::size_t shortcutAround(std::size_t entry) const;
    std::string described(std::size_t entry) const;

    I18NLocale const& m_locale;
    AnsweredTree const& m_tree;
    std::unordered_multimap<VEX_HANDLE, std::size_t> m_entries;
    std::unordered_multimap<VEX_HANDLE, std::size_t> m_shortcuts; // written ones, by their target
    std::unordered_multimap<VEX_HANDLE, std::size_t> m_notGone;   // by whose members are elsewhere
};

} // namespace vex
