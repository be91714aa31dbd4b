#pragma once

#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/ImportWork.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// What came of an import, whatever the kind.
class ImportedSource {
public:
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

    /// True when one of the notes holds the text.
    bool notes(std::string const& text) const {
        auto const& all = account().notes();
        return std::any_of(all.begin(), all.end(), [&](auto const& note) {
            return note.text.find(text) != std::string::npos;
        });
    }

protected:
    ImportedSource() = default;

    template <class Read> void import(vex::ImportRequest request, Read const& read) {
        m_work.emplace(std::move(request));
        try {
            read(*m_work);
            m_documents = vex::finishImport(*m_work);
        } catch (vex::SourceReport::Stop const&) {
            m_documents.reset();
        }
    }

private:
    std::optional<vex::ImportWork> m_work;
    std::optional<vex::ImportedDocuments> m_documents;
};
