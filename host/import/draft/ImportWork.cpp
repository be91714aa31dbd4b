#include "host/import/draft/ImportWork.h"

#include <utility>

namespace vex {

namespace {

/// None of those that models and catalogues are checked by.
constexpr char const* rule = "unusable-source";

} // namespace

ImportWork::ImportWork(ImportRequest asked)
    : request(std::move(asked)), m_file(request.sourceName()) {}

void ImportWork::enterFile(std::string const& file) {
    m_file = file.empty() ? request.sourceName() : file;
    account.enterFile(file);
    draft.model.enterFile(file);
}

void ImportWork::refuse(std::string text, DocumentPosition at) {
    found.push_back({Severity::Error, rule, m_file, at.line, at.column, std::move(text)});
    throw SourceReport::Stop();
}

void ImportWork::countMade(std::size_t values, std::size_t bytes, DocumentPosition at) {
    m_madeValues += values;
    m_madeBytes += bytes;
    if (m_madeValues > request.limits.sourceValues || m_madeBytes > request.limits.sourceBytes) {
        refuse("with what stands for it in many places the source comes to more than " +
                   std::to_string(request.limits.sourceValues) + " values or " +
                   std::to_string(request.limits.sourceBytes) + " bytes; split it",
               at);
    }
}

void ImportWork::spendOnViews(std::size_t steps) {
    m_spentOnViews += steps;
    if (m_spentOnViews > request.limits.viewEntries) {
        refuse("the views of all roles would name objects more than " +
               std::to_string(request.limits.viewEntries) +
               " times; import fewer roles or a smaller model");
    }
}

} // namespace vex
