#pragma once

#include "provider/start/VexStartPath.h"

#include <algorithm>
#include <vector>

/// Appends ".", unless the reference is empty, and the bracketed part.
inline void AppendReferencePart(I18NString& reference, I18NString const& part) {
    if (!reference.empty()) {
        reference.append(u'.');
    }
    AppendBracketedName(reference, part);
}

/// The parts of a reference while they are found, innermost first. The strings
/// belong to the caller and outlive this.
class VexReferenceText {
public:
    void putInFront(I18NString const& part) { m_inward.push_back(&part); }

    void appendTo(I18NString& reference) const {
        std::for_each(m_inward.rbegin(), m_inward.rend(), [&reference](I18NString const* part) {
            AppendReferencePart(reference, *part);
        });
    }

private:
    std::vector<I18NString const*> m_inward;
};
