#pragma once

#include "tests/naive/NaiveSession.h"

#include <gtest/gtest.h>

namespace naive {

/// A session on a model written into a test.
struct TestSession {
    explicit TestSession(std::string const& modelText, Text const& locale = u"en",
                         std::string const& catalogueText = "", Text const& user = Text())
        : model(modelText),
          catalogue(catalogueText.empty() ? nullptr
                                          : std::make_unique<PlainCatalogue>(catalogueText)),
          session(SessionOptions{&model, catalogue.get(), user, locale}) {}

    /// One metadata request; `options` are the attributes of "Metadata", each of `properties` a
    /// requested property or collection.
    Outcome ask(std::string const& options, std::vector<std::string> const& properties,
                Text const& path = u"m", std::string const& more = "") {
        std::string request = "<Metadata " + options + ">" + more;
        for (std::string const& property : properties) {
            request += "<Property name=\"" + property + "\"/>";
        }
        return session.doAction(Value::ofLong(31000), {Value::ofLong(0), Value::ofString(path),
                                                       Value::ofNode(request + "</Metadata>")});
    }

    /// What stands in "Result" after the request; the failure's id when it raised.
    std::string result(std::string const& options, std::vector<std::string> const& properties,
                       Text const& path = u"m", std::string const& more = "") {
        Outcome const outcome = ask(options, properties, path, more);
        if (outcome.failure) {
            return "failure " + std::to_string(outcome.failure->id);
        }
        std::string const start = "<Response><Result>";
        std::string const end = "</Result></Response>";
        if (outcome.response == "<Response><Result/></Response>") {
            return "";
        }
        EXPECT_EQ(outcome.response.substr(0, start.size()), start);
        return outcome.response.substr(start.size(),
                                       outcome.response.size() - start.size() - end.size());
    }

    /// 1 or 0; the failure's id when it raised.
    long access(Text const& path, Text const& object, long mode = 0) {
        Outcome const outcome =
            session.doAction(Value::ofLong(32000), {Value::ofLong(0), Value::ofString(path),
                                                    Value::ofObject(object), Value::ofLong(mode)});
        return outcome.failure ? static_cast<long>(outcome.failure->id)
                               : outcome.appended.at(1).number;
    }

    PlainModel model;
    std::unique_ptr<PlainCatalogue> catalogue;
    NaiveSession session;
};

inline void expectFailure(Outcome const& outcome, std::uint32_t id, int line, Text const& function,
                          Texts const& parameters) {
    ASSERT_TRUE(outcome.failure.has_value());
    EXPECT_EQ(outcome.failure->id, id);
    EXPECT_EQ(outcome.failure->line, line);
    EXPECT_EQ(outcome.failure->function, function);
    EXPECT_EQ(outcome.failure->parameters, parameters);
}

} // namespace naive
