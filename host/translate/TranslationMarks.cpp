#include "host/translate/TranslationMarks.h"

namespace vex {

namespace {

struct MarkName {
    TranslationMark mark;
    char const* name;
};
constexpr MarkName names[] = {
    {TranslationMark::None, ""},
    {TranslationMark::Changed, "changed"},
    {TranslationMark::Gone, "gone"},
};

} // namespace

char const* translationMarkName(TranslationMark mark) {
    for (MarkName const& each : names) {
        if (each.mark == mark) {
            return each.name;
        }
    }
    return "";
}

std::optional<TranslationMark> findTranslationMark(std::string_view name) {
    for (MarkName const& each : names) {
        if (each.name == name) {
            return each.mark;
        }
    }
    return std::nullopt;
}

} // namespace vex
