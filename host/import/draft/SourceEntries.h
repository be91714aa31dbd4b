#pragma once

#include "host/import/draft/ImportWork.h"
#include "host/import/draft/SourceTree.h"

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// A key that things of a kind may have and that nothing of the model stands for, and why.
struct UnmappedKey {
    std::string_view kind;
    std::string_view key;
    std::string_view reason;
    /// What its entries are called in the account, when it is a list of things; else it is
    /// counted as "kind.key".
    std::string_view entries = {};
};

/// A thing of a source tree, read key by key. Whatever a reader asks for is told to the
/// account as mapped; the rest as left out, each key once, by `leaveOutRest`.
class SourceEntries {
public:
    /// `kind` names the thing in the account; `value` is a map of the tree, anything else is
    /// refused. All are the caller's.
    SourceEntries(SourceTree const& tree, SourceTree::Value value, std::string_view kind,
                  ImportWork& work);

    /// From here on nothing is told: the thing itself was told as left out.
    void tellNothing() { m_isTold = false; }

    SourceTree const& tree() const { return m_tree; }
    std::string_view kind() const { return m_kind; }
    DocumentPosition position() const { return m_tree.positionOf(m_value); }

    /// What stands under a key, for a look that tells nothing; `None` without one.
    SourceTree::Value find(std::string_view key) const { return m_tree.find(m_value, key); }
    bool has(std::string_view key) const { return find(key) != SourceTree::None; }
    /// The caller has told the account of the key himself.
    void ignore(std::string_view key) { take(key); }

    /// The text of a key; lists of texts are lines. Nothing when the key is missing, or has
    /// no text: that is told as left out.
    std::optional<std::string> text(std::string_view key);
    /// The same, for the caller to tell of; "" when there is no text.
    std::string plainText(std::string_view key);
    /// The same for a name, without white space at its ends; an empty one, or none, is refused.
    std::string name(std::string_view key = "name");
    bool isTrue(std::string_view key);

    /// What stands in a list; a value of another kind is refused. Each is the caller's to tell
    /// the account of.
    std::vector<SourceTree::Value> list(std::string_view key);
    /// A map that stands under the key; `None` without one.
    SourceTree::Value map(std::string_view key);

    /// Tells of each key that was not asked for: with the reason of the table, else as unknown.
    void leaveOutRest(std::span<UnmappedKey const> table, std::string_view nameOfThing);

private:
    SourceTree::Value take(std::string_view key);
    std::string kindOf(std::string_view key) const;
    /// Nothing for what is no text and no list of texts.
    std::optional<std::string> textOf(SourceTree::Value value) const;
    void tellMapped(std::string_view key);
    void tellLeftOut(std::string_view key, char const* reason, SourceTree::Value value);

    SourceTree const& m_tree;
    SourceTree::Value m_value;
    std::string m_kind;
    ImportWork& m_work;
    bool m_isTold = true;
    std::vector<SourceTree::Value> m_taken;
};

} // namespace vex
