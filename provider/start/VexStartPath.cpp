#include "provider/start/VexStartPath.h"

#include "I18NStringIterator.h"
#include "provider/VexConstants.h"
#include "resources.h"

bool GetNamePartsFromStartPath(I18NString const& startPath, VexNameParts& parts) {
    enum class State { ExpectingOpen, InsideName, AfterClose };
    State state = State::ExpectingOpen;
    I18NStringIterator text(startPath);
    while (text.hasNext()) {
        char32_t const c = text.next();
        if (state == State::InsideName) {
            if (c != U']') {
                parts.back().appendCodePoint(c);
            } else if (text.peek() == U']') {
                text.next();
                parts.back().append(u']');
            } else {
                state = State::AfterClose;
            }
        } else if (state == State::ExpectingOpen && c == U'[') {
            parts.emplace_back();
            state = State::InsideName;
        } else if (state == State::AfterClose && c == U'.') {
            state = State::ExpectingOpen;
        } else if (!I18NCodePointIsWhitespace(c)) {
            return false;
        }
    }
    return startPath.empty() || state == State::AfterClose;
}

I18NString& SearchAndReplace(I18NString const& source, I18NString const& search,
                             I18NString const& replacement, I18NString& result) {
    result = source;
    for (int at = result.find(search, 0); at >= 0;
         at = result.find(search, at + replacement.length())) {
        result.replace(at, search.length(), replacement);
    }
    return result;
}

void getItemsStringFromList(std::vector<I18NString> const& items, I18NString& text) {
    bool first = true;
    for (I18NString const& item : items) {
        if (!first) {
            text += resources::getString(resources::ListSeparator);
            text += resources::getString(resources::ListBlank);
        }
        text += item;
        first = false;
    }
}
