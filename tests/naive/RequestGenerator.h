#pragma once

#include "tests/naive/GeneratorSupport.h"

namespace naive {

/// Request documents for one model, most of them naming objects that are there.
class RequestGenerator {
public:
    RequestGenerator(Random& random, PlainModel const& model, Text locale);

    std::string request();

    /// The id of an object, now and then its reference, "" for the null handle.
    Text object();

private:
    std::string options();
    std::string start();
    std::string depth();
    std::string properties();
    std::string collections();
    std::string globals();
    std::string constraints();
    std::string entry(std::string const& element, std::string const& text);
    std::string prefix();

    Handle startObject();
    Text startPath();
    Texts pathTo(Handle object);
    Text reference();
    Texts referenceThrough(Handle shortcut);
    Text spoilt(Text const& path);
    Text nameOf(Handle object);

    Random& m_random;
    PlainModel const& m_model;
    Text m_locale;
    Handles m_objects;
    Texts m_classesOnPath; ///< of the start path of the request at hand
};

} // namespace naive
