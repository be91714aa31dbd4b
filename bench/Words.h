#pragma once

#include <span>

namespace bench {

/// A name in the two languages of generated models.
struct Word {
    char const* en;
    char const* de;
};

// The vocabulary of a business model. Names are put together from few words, so
// that they repeat as in real models.
extern std::span<Word const> const AreaWords;
extern std::span<Word const> const FolderWords;
extern std::span<Word const> const OwnerWords; // first word of a query subject's name
extern std::span<Word const> const TopicWords; // its second word
extern std::span<Word const> const ItemWords;
extern std::span<Word const> const ItemFolderWords;
extern std::span<Word const> const FilterWords;
extern std::span<Word const> const CalculationWords;

} // namespace bench
