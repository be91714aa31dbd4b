#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"
#include "provider/VexMDMaProvider.h"
#include "provider/start/VexStartPath.h"

#include <algorithm>
#include <memory>

namespace {

using Names = VexMDMaProvider::NameParts;

I18NString withDoubledBrackets(I18NString const& name) {
    I18NString doubled;
    return SearchAndReplace(name, "]", "]]", doubled);
}

void requireSplit(I18NString const& path, Names const& expected, char const* property) {
    Names parts;
    fuzz::require(GetNamePartsFromStartPath(path, parts), property);
    fuzz::require(parts == expected, property);
}

// The input's lines without "]".
Names namesIn(std::string_view input) {
    Names names;
    for (std::size_t at = 0; at <= input.size();) {
        std::size_t const end = std::min(input.find('\n', at), input.size());
        std::string name(input.substr(at, end - at));
        std::erase(name, ']');
        names.push_back(I18NString::fromUtf8(name));
        at = end + 1;
    }
    return names;
}

} // namespace

void fuzz::startPath(std::string_view input) {
    static auto const session = openSession();
    static VexMDMaProvider provider(*session, "a model");

    Names parts;
    I18NString const text = I18NString::fromUtf8(input);
    if (GetNamePartsFromStartPath(text, parts) && !parts.empty()) {
        Names doubled;
        std::transform(parts.begin(), parts.end(), std::back_inserter(doubled),
                       withDoubledBrackets);
        I18NString written;
        provider.BuildObjectReference(doubled, written);
        requireSplit(written, parts, "a split path, written with doubled brackets, reads the same");
    }
    Names const names = namesIn(input);
    I18NString reference;
    provider.BuildObjectReference(names, reference);
    requireSplit(reference, names, "a reference of names without \"]\" splits into these names");
}
