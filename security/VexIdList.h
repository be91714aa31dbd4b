#pragma once

#include "VexTextSet.h"
#include "security/VexIdSet.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

/// The ids of one kind that views list: those that were read from the model, and sets of
/// them that the host has ready. Many sets that many questions are asked about are read
/// after all, into one: in the end a question costs the same however many there are.
///
/// Threads: one at a time, questions too.
class VexIdList {
public:
    /// Adds an id; one that is already there may be kept twice.
    void insert(std::u16string_view id) { m_read.insert(id); }
    /// Makes room for `count` more ids that are inserted.
    void reserveMore(std::size_t count) { m_read.reserveMore(count); }
    /// Adds what a set holds, which is not null; it is kept.
    void add(std::shared_ptr<VexTextSet const> ready);

    bool contains(I18NString const& id) const;

private:
    /// So many sets are asked one after the other for good.
    static constexpr std::size_t FewSets = 4;

    void readSets() const;

    // How the ids are kept changes with the questions; which ids there are does not.
    mutable VexIdSet m_read;
    mutable std::vector<std::shared_ptr<VexTextSet const>> m_ready;
    mutable std::size_t m_readyIds = 0;  // in the sets
    mutable std::size_t m_setsAsked = 0; // by all questions
};
