#pragma once

#include "KRLException.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

/// What the call complains about; a failure of the test when it does not.
inline std::string complaintOf(std::function<void()> const& call) {
    try {
        call();
    } catch (KRLException const& problem) {
        return problem.what();
    }
    ADD_FAILURE() << "nothing was raised";
    return "";
}
