#pragma once

#include "tests/naive/NaiveProvider.h"

namespace naive {

/// The accessibility check of one session.
class NaiveAccessAction {
public:
    explicit NaiveAccessAction(NaiveHost const& host) : m_host(host) {}

    bool isAccessible(Text const& modelPath, Handle object, long mode);

private:
    void takePath(Text const& modelPath);
    void retrieveSecurityInfo();

    NaiveHost m_host;
    Text m_modelPath;
    Texts m_views;
    Texts m_roles;
    bool m_securityRetrieved = false;
    bool m_nonContentPath = false; ///< once set, set for good
    std::unique_ptr<NaiveAccessEngine> m_engine;
};

} // namespace naive
