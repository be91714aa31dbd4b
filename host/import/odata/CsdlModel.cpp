#include "host/import/odata/CsdlModel.h"

#include <algorithm>

namespace vex {

std::string const* CsdlSaid::find(std::string_view property) const {
    auto const found = std::find_if(values.begin(), values.end(),
                                    [&](Value const& each) { return each.property == property; });
    return found == values.end() ? nullptr : &found->value;
}

bool CsdlSaid::say(std::string_view property, std::string value) {
    if (find(property) != nullptr) {
        return false;
    }
    values.push_back({std::string(property), std::move(value)});
    return true;
}

std::size_t CsdlModel::findType(std::string_view qualified) const {
    auto const found = typeOfName.find(qualified);
    return found == typeOfName.end() ? CsdlType::None : found->second;
}

std::string CsdlModel::qualifiedName(CsdlType const& type) const {
    return schemas[type.schema].name + '.' + type.name;
}

} // namespace vex
