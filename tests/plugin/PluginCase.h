#pragma once

#include "KRLPluginCreator.h"
#include "VexAction.h"
#include "VexException.h"
#include "VexNotification.h"
#include "tests/support/TestDocument.h"
#include "tests/support/TestSession.h"

#include <memory>
#include <string>

/// A notification of any kind.
class TestNotification final : public VexNotification {
public:
    TestNotification(int kind, VexSession& session) : m_kind(kind), m_session(session) {}
    ~TestNotification() override = default;
    int GetKind() const override { return m_kind; }
    VexSession& GetSession() const override { return m_session; }

private:
    int m_kind;
    VexSession& m_session;
};

/// The plug-in as a host gets it from the factory, on one session.
class PluginCase {
public:
    static constexpr long Metadata = VexAction::MetadataRequest;
    static constexpr long Accessibility = VexAction::AccessibilityRequest;

    explicit PluginCase(std::string const& model);
    /// Closes the session, so that nothing of the plug-in's stays behind.
    ~PluginCase();

    long act(long code, VexParams const& in) { return act(VexVariant(code), in); }
    long act(VexVariant const& action, VexParams const& in);
    void notify(int kind);

    /// The usual metadata request and accessibility question on a content path.
    long askMetadata(char const* path = "/content/m");
    long askAccess(char const* id, long mode = 0, char const* path = "/content/m");

    /// The session's text under that key; "" without.
    std::string entry(char const* key);

    TestModel model;
    TestSession session;
    TestResponse response;
    VexParams out; // of the last call
    std::unique_ptr<VexPluginInterface> plugin;
};
