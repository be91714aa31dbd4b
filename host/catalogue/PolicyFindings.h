#pragma once

#include "host/catalogue/Policy.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace vex {

class SourceReport;

/// What became of a rule in a model.
struct RuleOutcome {
    bool isMet = false;
    bool hasId = false; // something that is meant
    bool takesAway = false;
};

/// Tells what is wrong with a policy in a model, as the reading of the model is told. Of each
/// sort of doubt some are told, and how many there are more.
class PolicyFindings {
public:
    static constexpr std::size_t MostOfARule = 200;

    /// Both stay where they are.
    PolicyFindings(Policy const& policy, SourceReport& report)
        : m_policy(policy), m_report(report) {}

    void refuseId(PolicyView const& view);
    /// Raises `SourceReport::Stop`.
    [[noreturn]] void stopTooLarge(std::string text);

    void checkRule(PolicyView const& view, PolicyRule const& rule, RuleOutcome const& outcome);
    void checkSpread(PolicyView const& view);
    void tellWithoutMatch(PolicyRule const& rule);
    /// An object of the model that no rule speaks of.
    void tellObject(std::u16string_view className, std::u16string_view name,
                    DocumentPosition const& at);
    /// Comes last.
    void tellRest();

private:
    void tellWithoutEffect(YamlPlace const& at, std::string text);
    void add(char const* rule, YamlPlace const& at, std::string text);
    void add(char const* rule, std::string const& file, YamlPlace const& at, std::string text);

    Policy const& m_policy;
    SourceReport& m_report;
    std::map<std::string, std::size_t> m_counts; // by rule
};

} // namespace vex
