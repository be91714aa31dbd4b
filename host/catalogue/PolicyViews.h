#pragma once

#include "host/catalogue/Policy.h"
#include "host/catalogue/PolicyTrace.h"
#include "host/store/build/Diagnostic.h"
#include "host/store/build/ModelAddition.h"
#include "host/store/image/StoreData.h"

#include <cstddef>

namespace vex {

/// Makes ordinary security views of a policy's rules when a model is read. What is
/// wrong with a rule in this model is reported as the model's reading is: a view whose
/// id the model has is an error; in doubt are selectors that mean nothing, exceptions
/// that take nothing away, and, where positions are kept, objects that no rule speaks of.
class PolicyViews final : public ModelAddition {
public:
    /// What may come of rules in one model.
    struct Limits {
        std::size_t entries = PolicyLimits::entries;
        std::size_t steps = PolicyLimits::steps;
    };

    /// Both stay where they are. What the rules meant is kept in `trace`, if there is one.
    explicit PolicyViews(Policy const& policy, PolicyTrace* trace = nullptr)
        : PolicyViews(policy, trace, Limits()) {}
    PolicyViews(Policy const& policy, PolicyTrace* trace, Limits limits)
        : m_policy(policy), m_trace(trace), m_limits(limits) {}

    void addTo(WrittenModel& model, ModelWriter& writer, SourceReport& report) override;

private:
    Policy const& m_policy;
    PolicyTrace* m_trace;
    Limits m_limits;
};

} // namespace vex
