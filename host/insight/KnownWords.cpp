#include "host/insight/KnownWords.h"

#include "resources.h"

#include <algorithm>
#include <vector>

namespace vex {

namespace {

constexpr long askedFor[] = {
    resources::Namespace,       resources::Folder, resources::QuerySubject, resources::QueryItem,
    resources::QueryItemFolder, resources::Filter, resources::Calculation};

std::vector<I18NString> wordsOf(std::span<long const> numbers,
                                std::initializer_list<char const*> others) {
    std::vector<I18NString> words;
    for (long const number : numbers) {
        words.push_back(resources::getString(number));
    }
    words.insert(words.end(), others.begin(), others.end());
    return words;
}

} // namespace

std::span<I18NString const> KnownWords::classes() {
    constexpr long further[] = {resources::Shortcut, resources::SecurityView, resources::SetEntry,
                                resources::ViewMember, resources::Function};
    static std::vector<I18NString> const words = [&] {
        std::vector<I18NString> all = wordsOf(
            askedFor, {"model", "property", "locales", "relationship", "securityViews", "set"});
        std::vector<I18NString> const more = wordsOf(further, {});
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }();
    return words;
}

std::span<I18NString const> KnownWords::properties() {
    constexpr long numbers[] = {resources::Name, resources::RoleBased, resources::SetKind,
                                resources::MemberRole};
    static std::vector<I18NString> const words =
        wordsOf(numbers, {"id", "role", "class", "screenTip", "description", "datatype", "usage",
                          "expression", "refobj", "defaultLocale"});
    return words;
}

std::span<I18NString const> KnownWords::datatypes() {
    static std::vector<I18NString> const words{"string", "boolean", "int16",    "int32",
                                               "int64",  "decimal", "float",    "double",
                                               "date",   "time",    "dateTime", "binary"};
    return words;
}

std::span<I18NString const> KnownWords::usages() {
    static std::vector<I18NString> const words{"attribute", "identifier", "fact"};
    return words;
}

bool isAskedFor(I18NString const& className) {
    return std::any_of(std::begin(askedFor), std::end(askedFor),
                       [&](long number) { return className == resources::getString(number); });
}

} // namespace vex
