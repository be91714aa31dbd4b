#include "VexMessage.h"

#include "VexMessageTexts.h"

#include <optional>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t placeholderLength = 3; // "{0}"

bool isPlaceholder(std::string_view text) {
    return text.size() >= placeholderLength && text[0] == '{' && text[1] >= '0' && text[1] <= '9' &&
           text[2] == '}';
}

// The text with the parameters in their places; none when one of them is missing.
std::optional<std::string> filled(std::string_view text,
                                  std::vector<KRLMessageParm> const& parameters) {
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        if (isPlaceholder(rest)) {
            auto const index = static_cast<std::size_t>(rest[1] - '0');
            if (index >= parameters.size()) {
                return std::nullopt;
            }
            result += parameters[index].GetText().toUtf8();
            rest.remove_prefix(placeholderLength);
        } else {
            result += rest.front();
            rest.remove_prefix(1);
        }
    }
    return result;
}

} // namespace

std::string VexMessage::GetText() const {
    char const* const text = VexFindMessageText(GetId());
    if (text == nullptr) {
        return "Failure " + std::to_string(GetId()) + "; it has no text.";
    }
    return filled(text, m_components.GetParameters()).value_or(VexFindPlainMessageText(GetId()));
}
