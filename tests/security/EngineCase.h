#pragma once

#include "security/VexMDAccessEngine.h"
#include "tests/support/TestSession.h"

#include <string>
#include <vector>

/// A model of security views and an engine on it.
class EngineCase {
public:
    /// `views` is what stands in the model's "securityViews".
    EngineCase(std::string const& views, std::vector<I18NString> const& requested,
               std::vector<I18NString> const& roles = {}, bool unrestricted = false)
        : m_model("<model id=\"m\"><namespace id=\"n\"/><namespace id=\"o\"/>"
                  "<filter/><securityViews>" +
                  views + "</securityViews></model>"),
          m_session(m_model),
          m_engine(&m_session, requested, roles, I18NLocale("en"), unrestricted) {}

    bool includes(char const* id) { return m_engine.IsIncluded(id, false); }
    bool includesBeyondViews(char const* id) { return m_engine.IsIncluded(id, true); }

    TestModel& model() { return m_model; }
    VexMDAccessEngine& engine() { return m_engine; }

private:
    TestModel m_model;
    TestSession m_session;
    VexMDAccessEngine m_engine;
};
