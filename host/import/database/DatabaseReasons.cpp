#include "host/import/database/DatabaseReasons.h"

#include "I18NString.h"
#include "host/import/draft/PlainText.h"
#include "host/store/build/WritableText.h"

namespace vex::databaseReasons {

char const* againstName(std::string_view name) {
    if (trimmed(name).empty()) {
        return Nameless;
    }
    return isWritable(name) ? nullptr : Unwritable;
}

bool isWritable(std::string_view text) {
    return findUnwritable(I18NString::fromUtf8(text).view()) == std::u16string_view::npos;
}

} // namespace vex::databaseReasons
