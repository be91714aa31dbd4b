#pragma once

#include "tests/support/TestNode.h"

#include <memory>
#include <string_view>
#include <vector>

/// The nodes of a model document, elements in document order relative to each
/// other, the root first.
std::vector<std::unique_ptr<TestNode>> readTestModel(std::string_view xml);
