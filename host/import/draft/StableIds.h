#pragma once

#include <string>
#include <vector>

namespace vex {

struct DraftKey;

/// An id for each key, in their order; reading a source again gives the same things the same
/// ids. The id is "kind:tag", else "kind:path", a long one cut and told apart by a number made
/// of all of it. What several keys share is no one's: tags that stand twice give way to the
/// paths, and paths that stand twice are numbered from the second on, in the order of the keys.
std::vector<std::string> stableIds(std::vector<DraftKey const*> const& keys);

} // namespace vex
