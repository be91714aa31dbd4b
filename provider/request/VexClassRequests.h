#pragma once

#include "I18NString.h"

#include <list>
#include <unordered_map>

/// Requests of one kind ("C/@A" or "C/D"), in document order, found by the class before their
/// first "/". The first questions go through all of them; when more are asked they are sorted
/// by class, so that many classes of many requests cost no more than both together.
///
/// Threads: one at a time, questions too.
class VexClassRequests {
public:
    /// Adds a request behind the others.
    void add(I18NString const& request);

    std::list<I18NString> const& all() const { return m_all; }

    /// All requests that begin with `className` and "/", in document order; others may stand
    /// among them. Valid until the next question.
    std::list<I18NString> const& about(I18NString const& className) const;

private:
    /// How many questions may be answered by all requests.
    static constexpr unsigned FewQuestions = 128;

    void sort() const;

    std::list<I18NString> m_all;
    mutable unsigned m_questions = 0;
    mutable bool m_isSorted = false;
    mutable std::unordered_map<I18NString, std::list<I18NString>> m_byClass; // when sorted
    std::list<I18NString> m_none;
};
