#include "KRLException.h"

namespace {

std::string located(std::string const& file, unsigned long line, unsigned long column,
                    std::string const& problem) {
    std::string text = file;
    for (unsigned long const number : {line, column}) {
        if (number == 0) {
            break;
        }
        if (!text.empty()) {
            text += ':';
        }
        text += std::to_string(number);
    }
    return text.empty() ? problem : text + ": " + problem;
}

} // namespace

KRLException::KRLException(std::string text) : m_text(std::move(text)) {}

KRLException::~KRLException() = default;

KRLLimitException::~KRLLimitException() = default;

KRLDocumentException::KRLDocumentException(std::string const& file, unsigned long line,
                                           unsigned long column, std::string const& problem)
    : KRLException(located(file, line, column, problem)), m_problem(problem), m_line(line),
      m_column(column) {}

KRLDocumentException::~KRLDocumentException() = default;
