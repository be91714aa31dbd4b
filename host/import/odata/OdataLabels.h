#pragma once

#include <string>
#include <vector>

namespace vex {

struct CsdlSaid;

/// Names of things that stand beside each other: a label, where it is no other's label and no
/// other's own name; else its own name.
class OdataLabels {
public:
    void add(std::string const& ownName, CsdlSaid const& said);
    std::vector<std::string> take() &&;

private:
    struct Named {
        std::string own;
        std::string label;
    };
    std::vector<Named> m_names;
};

} // namespace vex
