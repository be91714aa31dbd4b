#pragma once

#include "apps/vexma/RequestWarnings.h"
#include "apps/vexma/SourceOptions.h"
#include "host/insight/TreeQuestion.h"

#include <optional>
#include <string>
#include <vector>

namespace vex {

/// The request of the commands `metadata` and `tree`: a document as it is, or
/// one that is built from options.
class RequestOptions {
public:
    void addTo(CommandSyntax& command);

    /// Raises `UsageException` when options contradict each other.
    void check(SourceOptions const& source) const;

    /// The text of the request file; "" when options build the request. Reads standard
    /// input at most once: keep it. Raises `KRLDocumentException`.
    std::string readText() const;
    /// The request of that text. Raises `KRLDocumentException` when it cannot be read.
    KRLIDOM_OwnedDocument makeRequest(std::string const& text) const;
    /// What messages call the request file.
    std::string fileName() const { return m_file == "-" ? "standard input" : m_file; }

    /// The same request as one whose answer can be matched with the model.
    /// Raises `UsageException` when the options ask for more than names.
    TreeQuestion makeQuestion(Model const& model) const;

    /// The id or reference of the object to start at, whatever the request says; "" when
    /// the request says it.
    I18NString startId() const { return I18NString::fromUtf8(m_id); }

    /// Takes what is doubtful about the request.
    RequestWarnings makeWarnings() const { return RequestWarnings(m_strict); }

private:
    MetadataRequest build() const;

    std::string m_file;
    std::string m_id;
    OptionSyntax const* m_idOption = nullptr;
    std::string m_start;
    std::string m_reference;
    std::optional<long> m_depth;
    std::vector<std::string> m_properties;
    std::vector<std::string> m_collections;
    std::vector<std::string> m_constraints;
    std::vector<std::string> m_globals;
    std::string m_view;
    bool m_functions = false;
    RequestSize m_size;
    StrictOption m_strict;
    std::vector<OptionSyntax const*> m_building; // the options that build a request
};

} // namespace vex
