#pragma once

/// What the plug-in "RuleBreaker" does when it is asked to explain, by the
/// model path that it is asked about; on any other path it answers, with a tree of
/// one object.
namespace explainBreaker {

constexpr char const* throwStandard = "/content/standard"; // std::runtime_error
constexpr char const* throwPlatform = "/content/platform"; // KRLException

} // namespace explainBreaker
