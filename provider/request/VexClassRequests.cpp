#include "provider/request/VexClassRequests.h"

#include "provider/VexConstants.h"

void VexClassRequests::add(I18NString const& request) {
    m_all.push_back(request);
    m_byClass.clear();
    m_isSorted = false;
}

std::list<I18NString> const& VexClassRequests::about(I18NString const& className) const {
    // A class of a host may have any name, one with a "/" too.
    if (m_questions < FewQuestions || className.find(u'/') >= 0) {
        ++m_questions;
        return m_all;
    }
    if (!m_isSorted) {
        sort();
        m_isSorted = true;
    }
    auto const found = m_byClass.find(className);
    return found != m_byClass.end() ? found->second : m_none;
}

void VexClassRequests::sort() const {
    for (I18NString const& request : m_all) {
        int const slash = request.find(u'/');
        if (slash >= 0) { // else it is about no class
            m_byClass[request.substring(0, slash)].push_back(request);
        }
    }
}
