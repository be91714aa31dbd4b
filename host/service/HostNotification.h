#pragma once

#include "VexNotification.h"

namespace vex {

class HostNotification final : public VexNotification {
public:
    HostNotification(int kind, VexSession& session) : m_kind(kind), m_session(session) {}

    int GetKind() const override { return m_kind; }
    VexSession& GetSession() const override { return m_session; }

private:
    int m_kind;
    VexSession& m_session;
};

} // namespace vex
