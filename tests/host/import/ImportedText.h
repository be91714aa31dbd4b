#pragma once

#include "KRLException.h"
#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/tabular/TabularImport.h"
#include "host/import/xml/ModelLoader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A tabular model, imported from a text as the file "m.bim".
class ImportedText {
public:
    explicit ImportedText(std::string_view json, vex::ImportRequest request = {}) {
        request.source = "m.bim";
        request.name = request.name.empty() ? "m" : request.name;
        m_work.emplace(std::move(request));
        try {
            vex::importTabularText(json, *m_work);
            m_documents = vex::finishImport(*m_work);
        } catch (vex::SourceReport::Stop const&) {
            m_documents.reset();
        }
    }

    /// A model of one table "T" with these members, and what else the model has.
    static ImportedText ofTable(std::string const& members, std::string const& model = "") {
        return ImportedText(R"({"model":{"tables":[{"name":"T",)" + members + "}]" +
                            (model.empty() ? "" : ",") + model + "}}");
    }

    bool isWritten() const { return m_documents.has_value(); }
    std::string const& model() const { return m_documents.value().model; }
    std::string const& catalogue() const { return m_documents.value().catalogue; }
    vex::ImportAccount const& account() const { return m_work->account; }
    vex::ImportDraft const& draft() const { return m_work->draft; }

    /// The errors, each as it is printed.
    std::vector<std::string> errors() const {
        std::vector<std::string> texts;
        for (vex::Diagnostic const& each : m_work->found) {
            texts.push_back(toString(each));
        }
        return texts;
    }

    /// The ids that the view of a role shows.
    std::vector<std::string> seenBy(std::string const& role) const {
        std::vector<std::string> ids;
        for (vex::DraftGrant const& grant : draft().grants) {
            if (grant.role == role) {
                for (std::size_t const object : draft().views[grant.view].included) {
                    ids.push_back(draft().model[object].id);
                }
            }
        }
        return ids;
    }

    /// Why things of a kind were left out; "" when none was.
    std::string reasonFor(std::string const& kind) const {
        for (auto const& omission : account().omissions()) {
            if (omission.kind == kind) {
                return omission.reason;
            }
        }
        return "";
    }

private:
    std::optional<vex::ImportWork> m_work;
    std::optional<vex::ImportedDocuments> m_documents;
};
