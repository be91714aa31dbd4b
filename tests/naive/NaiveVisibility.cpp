#include "tests/naive/NaiveVisibility.h"

namespace naive {

NaiveVisibility::NaiveVisibility(PlainModel const& model, NaiveAccessEngine& engine)
    : m_model(model), m_engine(engine) {}

// An id that is known keeps its first verdict. So the namespace that is asked about, entered as 0
// before it is examined, stays 0 also when something is found in it.
int NaiveVisibility::isVisible(Handle& object) {
    Text const id = idOf(object);
    auto const known = m_verdicts.find(id);
    if (known != m_verdicts.end()) {
        return known->second;
    }
    if (m_engine.isIncluded(id, false)) {
        m_verdicts.insert({id, 1});
        return 1;
    }
    m_verdicts.insert({id, 0});
    int const examined = examineNamespace(object);
    return examined == 1 ? isVisible(object) : examined;
}

int NaiveVisibility::examineNamespace(Handle& object) {
    int result = 2;
    Handles found;
    for (Text const& className :
         {Text(u"folder"), Text(u"querySubject"), Text(u"queryItem"), Text(u"queryItemFolder"),
          Text(u"filter"), Text(u"calculation"), Text(u"shortcut")}) {
        if (hasIncludedChild(object, className, found)) {
            return 1;
        }
    }
    for (std::size_t i = 0; i < found.size() && result != 1; ++i) {
        Handle copy = found[i];
        result = examineNamespace(copy);
    }
    return result;
}

bool NaiveVisibility::hasIncludedChild(Handle& object, Text const& className, Handles& found) {
    loadCollection(m_model, object, className, found);
    for (Handle child : found) {
        if (!m_engine.isIncluded(idOf(child), false)) {
            continue;
        }
        if (className == u"namespace") {
            m_verdicts.insert({idOf(object), 2});
            object = child;
            m_verdicts.insert({idOf(child), 1});
        } else {
            object = parentNamespace(m_model, child);
            m_verdicts.insert({idOf(object), 1});
        }
        return true;
    }
    return false;
}

Text NaiveVisibility::idOf(Handle object) const {
    Text id;
    m_model.getId(object, id);
    return id;
}

void loadCollection(PlainModel const& model, Handle object, Text const& name, Handles& found) {
    for (Handle child : model.childObjects(object)) {
        Text className;
        model.getName(child, className);
        if (className == name) {
            found.push_back(child);
        }
    }
}

Handle parentNamespace(PlainModel const& model, Handle object) {
    Handle ancestor = model.getParent(object);
    Text className;
    model.getName(ancestor, className);
    while (ancestor && className != u"namespace") {
        ancestor = model.getParent(ancestor);
        model.getName(ancestor, className);
    }
    return ancestor;
}

} // namespace naive
