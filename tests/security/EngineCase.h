#pragma once

#include "security/VexMDAccessEngine.h"
#include "tests/support/TestSession.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

/// A model of security views and an engine on it, and the same again where the host has the
/// ids of views ready. Both must say the same.
class EngineCase {
public:
    /// `views` is what stands in the model's "securityViews".
    EngineCase(std::string const& views, std::vector<I18NString> const& requested,
               std::vector<I18NString> const& roles = {}, bool unrestricted = false)
        : m_reading(views, requested, roles, unrestricted),
          m_asking(views, requested, roles, unrestricted) {
        m_asking.model.offerTextSets();
    }

    bool includes(char const* id) { return decide(id, false); }
    bool includesBeyondViews(char const* id) { return decide(id, true); }

    /// Of the host that has nothing ready.
    TestModel& model() { return m_reading.model; }
    VexMDAccessEngine& engine() { return m_reading.engine; }

private:
    struct Side {
        Side(std::string const& views, std::vector<I18NString> const& requested,
             std::vector<I18NString> const& roles, bool unrestricted)
            : model("<model id=\"m\"><namespace id=\"n\"/><namespace id=\"o\"/>"
                    "<filter/><securityViews>" +
                    views + "</securityViews></model>"),
              session(model), engine(&session, requested, roles, I18NLocale("en"), unrestricted) {}

        TestModel model;
        TestSession session;
        VexMDAccessEngine engine;
    };

    bool decide(char const* id, bool skipViewLists) {
        VexAccessVerdict const read = m_reading.engine.Decide(id, skipViewLists);
        VexAccessVerdict const asked = m_asking.engine.Decide(id, skipViewLists);
        EXPECT_EQ(asked.included, read.included) << id;
        EXPECT_EQ(asked.reason, read.reason) << id;
        return m_reading.engine.IsIncluded(id, skipViewLists);
    }

    Side m_reading;
    Side m_asking;
};
