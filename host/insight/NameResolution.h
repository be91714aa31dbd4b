#pragma once

#include "I18NHash.h"
#include "host/store/image/Model.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vex {

/// What names in a text lead to.
struct ResolvedNames {
    std::vector<VEX_HANDLE> candidates; // several, when one name may stand for any of them
    std::size_t used = 0;               // how many of the names lead there, from the first
    I18NString reference;               // these
};

/// Finds what names in the texts of a model stand for. Not for threads.
class NameResolution {
public:
    /// The model stays where it is.
    explicit NameResolution(Model const& model) : m_model(model) {}

    /// What names lead to by themselves: a reference, with or without the folders on the way,
    /// through shortcuts too; the most that lead somewhere.
    ResolvedNames resolve(std::vector<std::u16string> const& names) const;

    /// The same in a text of `reader`, where names may also be relative: to each element that
    /// the reader stands in, innermost first, and one name alone to anything in a namespace
    /// around it. What all names lead to comes before what some lead to.
    ResolvedNames resolveFor(VEX_HANDLE reader, std::vector<std::u16string> const& names);

    /// True for the name of something that stands in no namespace, such as a data source:
    /// names behind it are those of a database.
    bool isOutsideName(std::u16string const& name);

private:
    ResolvedNames follow(std::vector<std::u16string> const& scope,
                         std::vector<std::u16string> const& names) const;
    VEX_HANDLE find(std::vector<std::u16string> const& names) const;
    std::vector<std::vector<std::u16string>> scopesOf(VEX_HANDLE reader) const;
    void buildIndex();

    Model const& m_model;
    bool m_isIndexed = false;
    using Named = std::unordered_map<std::u16string, std::vector<VEX_HANDLE>, I18NTextHasher,
                                     std::equal_to<>>;
    std::unordered_map<VEX_HANDLE, Named> m_inNamespaces; // by the nearest one
    std::unordered_set<std::u16string, I18NTextHasher, std::equal_to<>> m_outside;
};

} // namespace vex
