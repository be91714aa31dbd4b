#pragma once

#include "tests/naive/NaiveAccessAction.h"

namespace naive {

/// A parameter of an action, as text a session can be replayed from.
struct Value {
    enum class Type { Empty, Long, String, Object, Node };

    Type type = Type::Empty;
    long number = 0;
    Text text; ///< a string, or the id or reference of an object ("" is the null handle)
    std::string xml;

    static Value empty() { return {}; }
    static Value ofLong(long number) { return {Type::Long, number, {}, {}}; }
    static Value ofString(Text const& text) { return {Type::String, 0, text, {}}; }
    static Value ofObject(Text const& object) { return {Type::Object, 0, object, {}}; }
    static Value ofNode(std::string const& xml) { return {Type::Node, 0, {}, xml}; }
};

/// One value that an action appended to its output parameters.
struct AppendedOutput {
    bool isNode = false; ///< the response node; else a long
    long number = 0;
};

/// What a call of an action came to: one of `code`, `failure`, `limit`, `gaveUp`.
struct Outcome {
    std::optional<long> code;
    std::optional<Failure> failure;
    std::optional<std::string> limit; ///< the element limit ended the call
    bool gaveUp = false;              ///< too much work: nothing is known of the answer
    std::vector<AppendedOutput> appended;
    std::string response; ///< the whole response document, in canonical form
};

struct SessionOptions {
    PlainModel const* model = nullptr;
    PlainCatalogue const* catalogue = nullptr;
    Text user;
    Text locale; ///< asked for; "" asks for the model's default locale
    std::size_t elementLimit = 2000000;
    std::size_t workBudget = 20000;
};

/// A session as a host sees it. Model and catalogue must outlive it.
class NaiveSession {
public:
    explicit NaiveSession(SessionOptions const& options);

    Outcome doAction(Value const& action, std::vector<Value> const& in);
    void notify(int kind);

private:
    bool hasActions() const { return m_metadata || m_access; }
    void requestMetadata(std::vector<Value> const& in, ResponseDocument& document,
                         Outcome& outcome);
    void checkAccess(std::vector<Value> const& in, Outcome& outcome);
    Handle resolve(Text const& object) const;

    struct MetadataAction {
        std::unique_ptr<NaiveProvider> provider;
    };

    SessionOptions m_options;
    NaiveHost m_host;
    std::unique_ptr<MetadataAction> m_metadata;
    std::unique_ptr<NaiveAccessAction> m_access;
};

} // namespace naive
