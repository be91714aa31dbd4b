#include "VexMessageTexts.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr VexMessageText texts[] = {
    {VexFailureId::ViewUnavailable,
     "None of the requested security views may be used. Requested: {1}. Available to this user: "
     "{0}. Request an available view that the model holds, or none to use all of them.",
     "None of the security views in question can be used: this user may not use them, or the model "
     "does not hold them. Request an available view that the model holds, or none to use all of "
     "them."},
    {VexFailureId::ShortcutDangling,
     "A shortcut refers to an object that the model does not hold. Correct the "
     "shortcut's \"refobj\" in the model."},
    {VexFailureId::ReferencedObjectLost,
     "The reference to \"{0}\" leads to no object. Check the names in the reference; "
     "they are compared in the language of the request.",
     "The reference leads to no object. Check the names in the reference; they are compared in the "
     "language of the request."},
    {VexFailureId::NoViewOrRole,
     "The user has no security view or role on this model. Grant one of the user's "
     "roles a view on the model, or ask as another user."},
    {VexFailureId::ModelWithoutNamespace,
     "The model holds no namespace, so there is nothing to answer from. Add a "
     "\"namespace\" element to the model."},
    {VexFailureId::ModelWithoutViews,
     "Access to the model is restricted, but the model holds no security view to "
     "decide by. Add a \"securityView\" element to the model."},
    {VexFailureId::PathMalformed,
     "The start path cannot be split into names. Write it as [name].[name], with a "
     "\"]\" inside a name doubled."},
    {VexFailureId::NotOneObject,
     "The reference to \"{0}\" does not lead to exactly one object. Give the objects "
     "beside each other distinct names, or start from another object.",
     "The reference does not lead to exactly one object. Give the objects beside each other "
     "distinct names, or start from another object."},
    {VexFailureId::NameNotFound,
     "No object named \"{0}\" was found on the way. Check the names in the path or "
     "reference, their language, and that the request asks for the collections that "
     "lead there.",
     "No object of the name that was asked for was found on the way. Check the names in the path "
     "or reference, their language, and that the request asks for the collections that lead "
     "there."},
    {VexFailureId::ShortcutTargetUnknown,
     "The shortcut \"{0}\" refers to an object that the model does not hold. Correct "
     "the shortcut's \"refobj\" in the model.",
     "A shortcut on the way refers to an object that the model does not hold. Correct the "
     "shortcut's \"refobj\" in the model."},
    {VexFailureId::ReferenceNameCount,
     "The reference {0} does not have two or three names. Write it as "
     "[namespace].[object] or [namespace].[object].[item].",
     "The reference does not have two or three names. Write it as [namespace].[object] or "
     "[namespace].[object].[item]."},
    {VexFailureId::NoSecuritySource,
     "Nothing is known about who may use the model at this path. Check the path, and "
     "that the catalogue lists it."},
    {VexFailureId::ParameterType,
     "A parameter is missing or has the wrong type. Pass the parameters in the order "
     "and with the types that the action describes."},
    {VexFailureId::ActionEntryMissing,
     "The session was first used for another kind of action, so \"{0}\" is missing "
     "from its data. Use one session for each kind of action, or close this one and "
     "open it again.",
     "The session was first used for another kind of action, so what this one needs is missing "
     "from its data. Use one session for each kind of action, or close this one and open it "
     "again."},
    {VexFailureId::MetadataElementMissing,
     "The request document has no \"Metadata\" element, so there is nothing to answer. "
     "Put the request into a \"Metadata\" element."},
    {VexFailureId::AnswerTooDeep,
     "The answer nests more than 1024 levels, at {0}. Start further down. Levels that are "
     "left out of the answer count as well, and \"Depth\" ends only those that are written.",
     "The answer nests more than 1024 levels. Start further down. Levels that are left out of "
     "the answer count as well, and \"Depth\" ends only those that are written."},
};

VexMessageText const* findRow(unsigned id) {
    auto const found = std::lower_bound(
        std::begin(texts), std::end(texts), id,
        [](VexMessageText const& row, unsigned wanted) { return row.id < wanted; });
    return found != std::end(texts) && found->id == id ? found : nullptr;
}

} // namespace

char const* VexFindMessageText(unsigned id) {
    VexMessageText const* const row = findRow(id);
    return row == nullptr ? nullptr : row->text;
}

char const* VexFindPlainMessageText(unsigned id) {
    VexMessageText const* const row = findRow(id);
    if (row == nullptr) {
        return nullptr;
    }
    return row->plainText != nullptr ? row->plainText : row->text;
}

VexMessageText const* VexMessageTexts(std::size_t& count) {
    count = std::size(texts);
    return texts;
}
