#include "host/import/odata/CsdlNames.h"

#include <algorithm>
#include <iterator>

namespace vex {

namespace {

// What models call the types that mean the same, and what holds their values otherwise.
constexpr CsdlDatatype datatypes[] = {
    {"Edm.String", "string", true},
    {"Edm.Boolean", "boolean", true},
    {"Edm.Int16", "int16", true},
    {"Edm.Int32", "int32", true},
    {"Edm.Int64", "int64", true},
    {"Edm.Decimal", "decimal", true},
    {"Edm.Single", "float", true},
    {"Edm.Double", "double", true},
    {"Edm.Date", "date", true},
    {"Edm.TimeOfDay", "time", true},
    {"Edm.DateTimeOffset", "dateTime", true},
    {"Edm.Binary", "binary", true},
    {"Edm.Byte", "int16", false},
    {"Edm.SByte", "int16", false},
    {"Edm.Guid", "string", false},
    {"Edm.Duration", "string", false},
    {"Edm.Stream", "binary", false},
};

} // namespace

bool CsdlNames::addAlias(std::string_view alias, std::string_view space) {
    auto const [known, isNew] = m_spaceOfAlias.emplace(alias, space);
    return isNew || known->second == space;
}

std::string CsdlNames::qualified(std::string_view name) const {
    std::size_t const dot = name.rfind('.');
    if (dot == std::string_view::npos) {
        return std::string(name);
    }
    auto const alias = m_spaceOfAlias.find(name.substr(0, dot));
    return alias == m_spaceOfAlias.end() ? std::string(name)
                                         : alias->second + std::string(name.substr(dot));
}

std::string CsdlNames::qualifiedPath(std::string_view path) const {
    std::size_t const end = std::min({path.find('/'), path.find('('), path.size()});
    return qualified(path.substr(0, end)) + std::string(path.substr(end));
}

bool CsdlNames::isOfOther(std::string_view qualified) const {
    std::size_t const dot = qualified.rfind('.');
    return dot != std::string_view::npos && m_included.contains(qualified.substr(0, dot));
}

CsdlTypeText csdlTypeText(std::string_view written) {
    constexpr std::string_view before = "Collection(";
    if (written.starts_with(before) && written.ends_with(')')) {
        written.remove_prefix(before.size());
        written.remove_suffix(1);
        return {written, true};
    }
    return {written, false};
}

CsdlDatatype const* findDatatype(std::string_view qualified) {
    auto const found =
        std::find_if(std::begin(datatypes), std::end(datatypes),
                     [&](CsdlDatatype const& each) { return each.primitive == qualified; });
    return found == std::end(datatypes) ? nullptr : found;
}

} // namespace vex
