#pragma once

#include <functional>
#include <string>
#include <vector>

/// Expects that `call` raises a `VexException` with exactly these particulars
/// and one message with the same id. `line` 0 stands for any line but 0.
void expectFailure(std::function<void()> const& call, unsigned id, std::string const& source,
                   int line, std::string const& function,
                   std::vector<std::string> const& parameters = {},
                   char const* testFile = __builtin_FILE(), int testLine = __builtin_LINE());

/// Expects that `call` raises what a host's call was told to fail with.
void expectInjectedFailure(std::function<void()> const& call,
                           char const* testFile = __builtin_FILE(),
                           int testLine = __builtin_LINE());
