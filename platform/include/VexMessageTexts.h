#pragma once

#include "VexExport.h"

#include <cstddef>

/// The failures of the metadata access plug-in, by number. The numbers are part of
/// the contract with hosts; one may stand for several failures, which differ in
/// the function and line that they name.
namespace VexFailureId {

/// The numbers.
enum Number : unsigned {
    ViewUnavailable = 1170551942,
    ShortcutDangling = 1170588191,
    ReferencedObjectLost = 1170653716,
    NoViewOrRole = 1170699671,
    ModelWithoutNamespace = 1170809568,
    ModelWithoutViews = 1170839636,
    PathMalformed = 1170869272,
    NotOneObject = 1170968146,
    NameNotFound = 1171025905,
    ShortcutTargetUnknown = 1171122674,
    ReferenceNameCount = 1171135124,
    NoSecuritySource = 1444335572,
    ParameterType = 1444379511,
    ActionEntryMissing = 1444379512,
    MetadataElementMissing = 1444379513,
    AnswerTooDeep = 1444379514,
};

} // namespace VexFailureId

/// A failure's number and its texts for people (UTF-8), which are static. In the text
/// "{0}" stands for the first parameter, "{1}" for the second.
struct VexMessageText {
    unsigned id;                     ///< the failure's number
    char const* text;                ///< for a failure with its parameters
    char const* plainText = nullptr; ///< for one without; null when there are none to miss
};

/// The text of a failure; null for a number that the table lacks.
VEX_PLATFORM_API char const* VexFindMessageText(unsigned id);

/// The text of a failure that came without its parameters, which shows none; null for
/// a number that the table lacks.
VEX_PLATFORM_API char const* VexFindPlainMessageText(unsigned id);

/// The whole table, ascending by number.
VEX_PLATFORM_API VexMessageText const* VexMessageTexts(std::size_t& count);
