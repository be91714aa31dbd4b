#include "host/import/odata/OdataLabels.h"

#include "host/import/draft/PlainText.h"
#include "host/import/odata/CsdlModel.h"

#include <map>

namespace vex {

void OdataLabels::add(std::string const& ownName, CsdlSaid const& said) {
    std::string const* const label = said.find("label");
    m_names.push_back({ownName, label == nullptr ? "" : trimmed(*label)});
}

std::vector<std::string> OdataLabels::take() && {
    std::map<std::string, std::size_t> count;
    for (Named const& each : m_names) {
        ++count[each.own];
        if (!each.label.empty() && each.label != each.own) {
            ++count[each.label];
        }
    }
    std::vector<std::string> names;
    names.reserve(m_names.size());
    for (Named const& each : m_names) {
        bool const isLabel = !each.label.empty() && count[each.label] == 1;
        names.push_back(isLabel ? each.label : each.own);
    }
    return names;
}

} // namespace vex
