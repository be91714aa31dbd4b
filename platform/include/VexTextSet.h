#pragma once

#include "I18NString.h"

#include <cstddef>
#include <string_view>
#include <vector>

/// Texts that a host has ready to be asked for: what `VexObjectModel::FindTextSet` gives, so
/// that a list of 100,000 ids is not read again by each request.
///
/// A host implements it; it is made whole and never changes. Who has it shares it, and may
/// keep it for longer than the model is loaded: it holds what it needs.
///
/// Threads: all operations may run at once, those of one set too.
/// Raises: whatever the host likes; a plug-in lets it pass.
class VEX_PLATFORM_API VexTextSet {
public:
    VexTextSet() = default;
    VexTextSet(VexTextSet const&) = delete;
    VexTextSet& operator=(VexTextSet const&) = delete;
    virtual ~VexTextSet();

    /// True when the text is one of them, unit by unit; "" is a text like any other. Takes
    /// the same time whatever the number of texts, or the plug-in is slow: it asks for each
    /// object that it shows.
    virtual bool contains(I18NString const& text) const = 0;

    /// How many texts there are, each counted once.
    virtual std::size_t size() const = 0;

    /// Appends each text once, in any order: the code units stay where they are as long as
    /// this set lives.
    virtual void appendTo(std::vector<std::u16string_view>& texts) const = 0;
};
