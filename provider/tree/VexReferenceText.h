#pragma once

#include "I18NString.h"
#include "provider/request/VexBracketedName.h"

#include <algorithm>
#include <vector>

/// The parts of a reference while they are found, innermost first. The strings
/// belong to the caller and outlive this.
class VexReferenceText {
public:
    void putInFront(I18NString const& part) { m_inward.push_back(&part); }

    void appendTo(I18NString& reference) const {
        std::for_each(m_inward.rbegin(), m_inward.rend(), [&reference](I18NString const* part) {
            AppendBracketedName(reference, part->view(), !reference.empty());
        });
    }

private:
    std::vector<I18NString const*> m_inward;
};
