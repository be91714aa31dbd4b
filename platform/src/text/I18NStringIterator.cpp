#include "I18NStringIterator.h"

#include <unicode/uchar.h>

bool I18NCodePointIsWhitespace(char32_t codePoint) {
    return u_isUWhiteSpace(static_cast<UChar32>(codePoint)) != 0;
}
