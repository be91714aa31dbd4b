#pragma once

#include "host/service/MetadataRequest.h"
#include "host/store/image/Model.h"

namespace vex {

/// How large an answer may become.
struct AnswerEstimate {
    std::size_t elements = 0; // "Response" and "Result" counted
    std::size_t bytes = 0;    // of memory while it is made
    bool isMore = false;      // counting stopped at the limit
};

struct EstimateQuestion {
    MetadataRequest const& request;
    I18NLocale locale;
    std::size_t elementLimit;
    /// Views may hide objects: below a depth's limit the members of what is
    /// hidden come up in its place.
    bool viewsMayHide;
};

/// Counts what the request reaches from its start, without building it. An upper
/// estimate: views and properties without value are left out of account, and
/// where several objects have the name of the start, the largest answer counts.
AnswerEstimate estimateAnswer(Model const& model, EstimateQuestion const& question);

} // namespace vex
