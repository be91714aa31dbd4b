#include "host/import/draft/ImportWork.h"

#include <utility>

namespace vex {

namespace {

/// None of those that models and catalogues are checked by.
constexpr char const* rule = "unusable-source";

} // namespace

ImportWork::ImportWork(ImportRequest asked)
    : request(std::move(asked)), m_sourceName(request.sourceName()) {}

void ImportWork::refuse(std::string text, DocumentPosition at) {
    found.push_back({Severity::Error, rule, m_sourceName, at.line, at.column, std::move(text)});
    throw SourceReport::Stop();
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
