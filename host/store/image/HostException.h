#pragma once

#include "KRLException.h"

namespace vex {

/// The host was asked for something that it does not have: a user, a model
/// path, an object.
class HostException final : public KRLException {
public:
    using KRLException::KRLException;
};

} // namespace vex
