#pragma once

#include "tests/naive/NaiveAccessEngine.h"

#include <map>

namespace naive {

/// Does a namespace that is not included hold something that is?
class NaiveVisibility {
public:
    NaiveVisibility(PlainModel const& model, NaiveAccessEngine& engine);

    /// 1 is visible; 0 and 2 are not. The handle may be replaced.
    int isVisible(Handle& object);

private:
    int examineNamespace(Handle& object);
    bool hasIncludedChild(Handle& object, Text const& className, Handles& found);
    Text idOf(Handle object) const;

    PlainModel const& m_model;
    NaiveAccessEngine& m_engine;
    std::map<Text, int> m_verdicts;
};

/// Appends the child objects of one class.
void loadCollection(PlainModel const& model, Handle object, Text const& name, Handles& found);

/// The nearest namespace above the object, or null.
Handle parentNamespace(PlainModel const& model, Handle object);

} // namespace naive
