#include "host/insight/TreeStory.h"

#include "I18NHash.h"
#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"

#include <algorithm>
#include <functional>
#include <unordered_set>

namespace vex {

namespace {

template <class Index> std::vector<std::size_t> inOrder(Index const& index, VEX_HANDLE key) {
    std::vector<std::size_t> found;
    auto const [first, last] = index.equal_range(key);
    std::transform(first, last, std::back_inserter(found),
                   [](auto const& entry) { return entry.second; });
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

TreeStory::TreeStory(I18NLocale const& locale, AnsweredTree const& tree)
    : m_locale(locale), m_tree(tree) {
    for (std::size_t entry = 0; entry < tree.size(); ++entry) {
        m_entries.emplace(tree[entry].object, entry);
        if (tree[entry].target.IsNotNull()) {
            m_shortcuts.emplace(tree[entry].target, entry);
        }
        if (tree[entry].members != MembersMet::Here) {
            m_notGone.emplace(
                tree[entry].target.IsNotNull() ? tree[entry].target : tree[entry].object, entry);
        }
    }
}

std::vector<std::size_t> TreeStory::entriesOf(VEX_HANDLE object) const {
    return inOrder(m_entries, object);
}

std::vector<std::string> TreeStory::treatmentOf(VEX_HANDLE object, bool isIncluded) const {
    std::vector<std::string> sentences;
    std::unordered_set<std::string, I18NTextHasher, std::equal_to<>> said;
    auto const addOnce = [&](std::string sentence) {
        Budget::charge();
        if (said.insert(sentence).second) {
            sentences.push_back(std::move(sentence));
        }
    };
    for (std::size_t const entry : entriesOf(object)) {
        addOnce(sentence(entry, isIncluded));
    }
    if (sentences.empty()) {
        sentences.push_back(outside(object));
    }
    for (std::size_t const shortcut : inOrder(m_shortcuts, object)) {
        if (m_tree[shortcut].fate == ObjectFate::Written) {
            addOnce("reached through the " + described(shortcut) +
                    ", under whose name it is written; the target is not tested");
        }
    }
    if (std::string ways = waysNotGone(object); !ways.empty()) {
        sentences.push_back(std::move(ways));
    }
    return sentences;
}

std::string TreeStory::waysNotGone(VEX_HANDLE object) const {
    std::vector<std::size_t> entries;
    for (VEX_HANDLE at = VexObject(object).GetParent(); at.IsNotNull();
         at = VexObject(at).GetParent()) {
        std::vector<std::size_t> const found = inOrder(m_notGone, at);
        entries.insert(entries.end(), found.begin(), found.end());
    }
    if (entries.empty()) {
        return {};
    }
    return "and through " + std::to_string(entries.size()) +
           " more, which lead to what was gone into before: the first is the " +
           described(*std::min_element(entries.begin(), entries.end()));
}

std::string TreeStory::sentence(std::size_t entry, bool isIncluded) const {
    AnsweredObject const& at = m_tree[entry];
    switch (at.fate) {
    case ObjectFate::Written:
        return writtenSentence(entry, isIncluded);
    case ObjectFate::LeftOut:
        return leftOutSentence(entry);
    case ObjectFate::WithoutName:
        return "left out with all its members: it has no name in " + m_locale.getName().toUtf8() +
               ", and nothing else is asked for";
    case ObjectFate::WithItsContainer: {
        std::size_t lost = entry;
        while (m_tree[lost].fate == ObjectFate::WithItsContainer) {
            lost = m_tree[lost].container;
        }
        return "left out with the " + described(lost) + ", which has no name in " +
               m_locale.getName().toUtf8();
    }
    case ObjectFate::NothingToStandFor:
        return "left out: a shortcut without a name or a target is not written";
    }
    return {};
}

std::string TreeStory::writtenSentence(std::size_t entry, bool isIncluded) const {
    AnsweredObject const& at = m_tree[entry];
    if (at.container == AnsweredObject::None) {
        return isIncluded ? "written as the start of a tree"
                          : "shown because it is the start of a tree, though it is not accessible";
    }
    std::size_t const around = writtenAround(entry);
    std::string const where = "written in the " + described(around);
    if (at.behindShortcut) {
        std::size_t const shortcut = shortcutAround(entry);
        return where + (shortcut == around ? "" : ", reached through the " + described(shortcut)) +
               ", behind which the included objects of views are not asked for";
    }
    if (at.target.IsNotNull()) {
        return where + " as what it stands for, the " + describeObject(at.target, m_locale) +
               "; neither is tested";
    }
    return isIncluded ? where
                      : where + " though it is not accessible, for something that is included "
                                "inside it";
}

std::string TreeStory::leftOutSentence(std::size_t entry) const {
    std::string text = "left out";
    if (m_tree[entry].behindShortcut) {
        text += " behind the " + described(shortcutAround(entry)) + " too";
    }
    bool hasMembers = false;
    // What is below an entry follows it and points at it or behind it.
    for (std::size_t at = entry + 1; at < m_tree.size() && m_tree[at].container >= entry &&
                                     m_tree[at].container != AnsweredObject::None;
         ++at) {
        hasMembers = true;
        if (m_tree[at].fate == ObjectFate::Written) {
            return text + "; its members that are shown are lifted into the " +
                   described(writtenAround(entry));
        }
    }
    if (m_tree[entry].members != MembersMet::Here) {
        return text + "; its members are as where they were gone into before";
    }
    return hasMembers ? text + ", and so is all that is in it" : text;
}

std::string TreeStory::outside(VEX_HANDLE object) const {
    VEX_HANDLE const space = outermostNamespaceOf(object);
    if (!space.IsNotNull()) {
        return "in no tree: it stands in no namespace";
    }
    return entriesOf(space).empty()
               ? "in no tree: none can start at the " + describeObject(space, m_locale)
               : "in no tree: what it stands in is not gone into";
}

std::size_t TreeStory::writtenAround(std::size_t entry) const {
    std::size_t at = m_tree[entry].container;
    while (m_tree[at].fate != ObjectFate::Written && m_tree[at].container != AnsweredObject::None) {
        at = m_tree[at].container;
    }
    return at;
}

std::size_t TreeStory::shortcutAround(std::size_t entry) const {
    std::size_t at = m_tree[entry].container;
    while (!m_tree[at].target.IsNotNull()) {
        at = m_tree[at].container;
    }
    return at;
}

std::string TreeStory::described(std::size_t entry) const {
    return describeObject(m_tree[entry].object, m_locale);
}

} // namespace vex
