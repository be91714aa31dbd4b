#pragma once

#include "tests/naive/GeneratorSupport.h"

namespace naive {

/// A small hostile model: few distinct names, names that are missing or stand in one locale only,
/// nested containers, shortcuts to anything, and security views; of about that many objects at
/// most.
std::string generateModel(Random& random, int objects);

/// The same with what documents may hold and no model needs: any class in any other, text between
/// elements, properties in properties and several of one name, roles and classes of single objects.
std::string generateOddModel(Random& random, int objects);

/// A catalogue for such a model at "/content/m", and a second path, "/content/other".
std::string generateCatalogue(Random& random);

} // namespace naive
