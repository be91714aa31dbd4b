#pragma once

#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odata/OdataImport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A service description, imported from a text as the file "s.xml".
class ImportedCsdl {
public:
    explicit ImportedCsdl(std::string_view csdl, vex::ImportRequest request = {}) {
        request.source = "s.xml";
        request.name = "s";
        m_work.emplace(std::move(request));
        try {
            vex::importOdataText(csdl, *m_work);
            m_documents = vex::finishImport(*m_work);
        } catch (vex::SourceReport::Stop const&) {
            m_documents.reset();
        }
    }

    /// A document with one schema "N", alias "Self", that holds this from line 4 on.
    static std::string document(std::string const& schema, std::string const& references = "") {
        return R"xml(<e:Edmx Version="4.0" xmlns:e="http://docs.oasis-open.org/odata/ns/edmx">)xml" +
               references + "<e:DataServices>\n" +
               R"xml(<Schema Namespace="N" Alias="Self" )xml"
               "\n"
               R"xml(xmlns="http://docs.oasis-open.org/odata/ns/edm">)xml" +
               "\n" + schema + "\n</Schema></e:DataServices></e:Edmx>";
    }
    static ImportedCsdl ofSchema(std::string const& schema, std::string const& references = "") {
        return ImportedCsdl(document(schema, references));
    }
    static ImportedCsdl withShortcuts(std::string const& schema) {
        vex::ImportRequest request;
        request.options["navigation"] = {"shortcut"};
        return ImportedCsdl(document(schema), std::move(request));
    }

    std::string model() const { return m_documents ? m_documents->model : "nothing was written"; }
    vex::ImportAccount const& account() const { return m_work->account; }

    std::vector<std::string> errors() const {
        std::vector<std::string> texts;
        for (vex::Diagnostic const& each : m_work->found) {
            texts.push_back(toString(each));
        }
        return texts;
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

/// References that declare the names of vocabularies.
inline constexpr char const* vocabularies =
    R"xml(<e:Reference Uri="x"><e:Include Namespace="Org.OData.Core.V1" Alias="Core"/>)xml"
    R"xml(<e:Include Namespace="Org.OData.Capabilities.V1" Alias="Cap"/>)xml"
    R"xml(<e:Include Namespace="com.sap.vocabularies.Common.v1" Alias="Common"/>)xml"
    R"xml(<e:Include Namespace="Other"/></e:Reference>)xml";
