#include "host/translate/CsvTranslation.h"
#include "host/translate/TranslationFile.h"
#include "host/translate/XliffTranslation.h"

#include <algorithm>
#include <iterator>

namespace vex {

namespace {

constexpr TranslationFormat formats[] = {
    {"xliff", {".xlf", ".xliff"}, &writeXliff, &readXliff},
    {"csv", {".csv", ".csv"}, &writeCsv, &readCsv},
};

template <class Test> TranslationFormat const* find(Test const& test) {
    auto const found = std::find_if(std::begin(formats), std::end(formats), test);
    return found == std::end(formats) ? nullptr : found;
}

} // namespace

TranslationFormat const* findTranslationFormat(std::string_view name) {
    return find([&](TranslationFormat const& each) { return each.name == name; });
}

TranslationFormat const* translationFormatOf(std::string const& file) {
    return find([&](TranslationFormat const& each) {
        return file.ends_with(each.endings[0]) || file.ends_with(each.endings[1]);
    });
}

} // namespace vex
