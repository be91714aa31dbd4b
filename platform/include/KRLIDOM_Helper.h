#pragma once

#include "KRLIDOM_Element.h"

/// Searches and checks that DOM itself lacks. Threads: one document on one at a time.
class VEX_PLATFORM_API KRLIDOM_Helper {
public:
    /// The first element named `tag` at or below `node`, in document order; the
    /// null element when there is none. Does not recurse.
    static KRLIDOM_Element findFirstElement(KRLIDOM_Node const& node, I18NString const& tag);

    /// True when `text` can name an element or attribute (XML 1.0 Name).
    static bool isName(I18NString const& text);
};
