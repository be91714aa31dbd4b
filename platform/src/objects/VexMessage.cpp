#include "VexMessage.h"

#include "VexMessageTexts.h"

#include <string_view>

namespace {

constexpr std::size_t placeholderLength = 3; // "{0}"

bool isPlaceholder(std::string_view text) {
    return text.size() >= placeholderLength && text[0] == '{' && text[1] >= '0' && text[1] <= '9' &&
           text[2] == '}';
}

} // namespace

std::string VexMessage::GetText() const {
    char const* const found = VexFindMessageText(GetId());
    if (found == nullptr) {
        return "Failure " + std::to_string(GetId()) + "; it has no text.";
    }
    std::vector<KRLMessageParm> const& parameters = m_components.GetParameters();
    std::string text;
    for (std::string_view rest = found; !rest.empty();) {
        if (isPlaceholder(rest)) {
            auto const index = static_cast<std::size_t>(rest[1] - '0');
            text += index < parameters.size() ? parameters[index].GetText().toUtf8()
                                              : std::string("(not stated)");
            rest.remove_prefix(placeholderLength);
        } else {
            text += rest.front();
            rest.remove_prefix(1);
        }
    }
    return text;
}
