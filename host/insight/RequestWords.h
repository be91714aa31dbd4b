#pragma once

#include "host/insight/SeenWords.h"
#include "host/service/MetadataRequest.h"
#include "host/service/Visit.h"

#include <string>
#include <vector>

namespace vex {

/// Something that a request asks for in vain.
struct DoubtfulWord {
    I18NString entry{}; // of the request; "" when it stands in none
    std::string text;   // what is doubtful, and the nearest word that is not
};

/// What a request asks for that nothing answers: properties, collections and classes
/// that no object has, settings that do not exist, a view that the user lacks, entries
/// that are of no form that is read. Words that have a meaning are never doubtful, nor
/// is what only objects have that the user may not see told from what nothing has.
std::vector<DoubtfulWord> doubtfulWords(MetadataRequest const& request, Visit const& visit,
                                        SeenWords& seen);

/// What is doubtful about the language asked for: "" when the model has it.
std::string doubtfulLocale(Visit const& visit);

} // namespace vex
