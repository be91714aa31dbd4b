#pragma once

#include "I18NString.h"

#include <initializer_list>

/// Every failure that the plug-in raises itself, one for each row of the table
/// in the source.
enum class VexFailure {
    MetadataParameterType,
    AccessParameterType,
    ActionEntryMissing,
    MetadataElementMissing,
    OutputTooDeep,
    StartPathMalformed,
    EngineWithoutViews,
    RequestedViewUnavailable,
    ModelWithoutNamespace,
    RootNameMalformed,
    FirstStepNotOne,
    LastNameNotFound,
    PastLastCollection, // no walk comes there; the record is part of the contract
    FirstNameNotFound,
    ReferencedMemberLost,
    ReferenceNameCount,
    ReferencedItemLost,
    ReferencedItemNotFound,
    FilterNotOne,
    CalculationNotOne,
    ShortcutNotOne,
    ModelWithoutShortcut,
    QuerySubjectNotOne,
    SubjectShortcutNotOne,
    SubjectShortcutDangling,
    NoQuerySubjectOrShortcut,
    QuerySubjectNotInNamespace,
    ItemWithoutFolders,
    ItemNotInFolders,
    ShortcutTargetUnknown,
    WrittenShortcutDangling,
    ModelWithoutViews,
    NoRequestedView,
    ProviderWithoutSource,
    ProviderWithoutViews,
    AccessWithoutSource,
    AccessWithoutViews,
    AccessWithoutRoles,
};

/// What hosts see of a failure. Line 0 stands for the line that raises it.
struct VexFailureRecord {
    VexFailure failure;
    unsigned id;
    char const* source;
    int line;
    char const* function;
};

VexFailureRecord const& FindFailure(VexFailure failure);

/// Raises a `VexException` with the failure's row and the parameters in order;
/// `line` is the caller's.
[[noreturn]] void RaiseFailure(VexFailure failure,
                               std::initializer_list<I18NString> parameters = {},
                               int line = __builtin_LINE());
