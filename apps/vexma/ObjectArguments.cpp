#include "apps/vexma/ObjectArguments.h"

#include "host/service/ObjectByName.h"

namespace vex {

ObjectArguments::ObjectArguments(std::vector<std::string> arguments, SourceOptions& source)
    : m_texts(std::move(arguments)) {
    for (std::string const& text : m_texts) {
        if (text.size() > 1 && text.front() == '-') {
            throw UsageException("there is no option " + text + "; see --help");
        }
    }
    if (source.catalogFile.empty() && !m_texts.empty()) {
        source.modelFile = m_texts.front();
        m_texts.erase(m_texts.begin());
    }
    source.check();
    if (m_texts.empty()) {
        throw UsageException("no object to ask about; give ids or references");
    }
}

Vex_Handle_Collection ObjectArguments::findIn(Model const& model,
                                              MayBeNamed const& mayBeNamed) const {
    Vex_Handle_Collection objects;
    for (std::string const& text : m_texts) {
        objects.push_back(findObject(model, I18NString::fromUtf8(text), mayBeNamed));
    }
    return objects;
}

} // namespace vex
