#include "model/VexFailure.h"

#include "VexException.h"
#include "VexMessageTexts.h"
#include "provider/VexConstants.h"

#include <array>
#include <cstddef>

namespace {

constexpr char Action[] = "VexMAAction";
constexpr char Access[] = "VexAccessAction";
constexpr char Plugin[] = "VexMAActionPlugin";
constexpr char Provider[] = "VexMDMaProvider";
constexpr char Engine[] = "VexMDAccessEngine";

// quirk: failure-names-not-uniform
// Hosts match on ids, lines and names, and the names are not uniform: several
// differ from the function that raises ("VexAction::", "VexMDMAProvider::",
// "VexMDMaProviderR::", "...Collection", a lower-case first letter). All of
// them are kept exactly as they are; none is a slip to repair.
constexpr char Validate[] = "VexAction::validateParameter";
constexpr char Request[] = "VexMDMaProvider::doRequest";
constexpr char GetEngine[] = "VexMDMaProvider::getAccessEngine";
constexpr char ProcessRoot[] = "VexMDMAProvider::ProcessRequest";
constexpr char ProcessNames[] = "VexMDMaProviderR::ProcessRequest";
constexpr char StartAtRef[] = "VexMDMaProvider::processStartAtRefRequest";
constexpr char FindMember[] = "VexMDMaProvider::findReferencedFilterOrCalculation";
constexpr char FindItem[] = "VexMDMaProvider::FindReferencedItem";
constexpr char Populate[] = "VexMDAccessEngine::populateAccessInfo";
constexpr char ProviderInfo[] = "VexMDMaProvider::RetrieveSecurityInfo";
constexpr char AccessInfo[] = "VexAccessAction::RetrieveSecurityInfo";

using F = VexFailure;
namespace I = VexFailureId;

constexpr std::array Failures{
    VexFailureRecord{F::MetadataParameterType, I::ParameterType, Action, 83, Validate},
    VexFailureRecord{F::AccessParameterType, I::ParameterType, Access, 0, Validate},
    VexFailureRecord{F::ActionEntryMissing, I::ActionEntryMissing, Plugin, 0,
                     "VexMAActionPlugin::DoAction"},
    VexFailureRecord{F::MetadataElementMissing, I::MetadataElementMissing, Provider, 0, Request},
    VexFailureRecord{F::OutputTooDeep, I::AnswerTooDeep, Provider, 0,
                     "VexMDMaProvider::GetRequestedElementTreeAtLevel"},
    VexFailureRecord{F::StartPathMalformed, I::PathMalformed, Provider, 145, Request},
    VexFailureRecord{F::EngineWithoutViews, I::NoViewOrRole, Provider, 212, GetEngine},
    VexFailureRecord{F::RequestedViewUnavailable, I::ViewUnavailable, Provider, 241, GetEngine},
    VexFailureRecord{F::ModelWithoutNamespace, I::ModelWithoutNamespace, Provider, 589,
                     ProcessRoot},
    VexFailureRecord{F::RootNameMalformed, I::PathMalformed, Provider, 615, ProcessRoot},
    VexFailureRecord{F::FirstStepNotOne, I::NameNotFound, Provider, 699, ProcessNames},
    VexFailureRecord{F::LastNameNotFound, I::NameNotFound, Provider, 780, ProcessNames},
    VexFailureRecord{F::PastLastCollection, I::NameNotFound, Provider, 788, ProcessNames},
    VexFailureRecord{F::FirstNameNotFound, I::NameNotFound, Provider, 808, ProcessNames},
    VexFailureRecord{F::ReferencedMemberLost, I::ReferencedObjectLost, Provider, 855, StartAtRef},
    VexFailureRecord{F::ReferenceNameCount, I::ReferenceNameCount, Provider, 866, StartAtRef},
    VexFailureRecord{F::ReferencedItemLost, I::ReferencedObjectLost, Provider, 885, StartAtRef},
    VexFailureRecord{F::ReferencedItemNotFound, I::NameNotFound, Provider, 898, StartAtRef},
    VexFailureRecord{F::FilterNotOne, I::NotOneObject, Provider, 949, FindMember},
    VexFailureRecord{F::CalculationNotOne, I::NotOneObject, Provider, 971, FindMember},
    VexFailureRecord{F::ShortcutNotOne, I::NotOneObject, Provider, 995, FindMember},
    VexFailureRecord{F::ModelWithoutShortcut, I::ReferencedObjectLost, Provider, 1080,
                     "VexMDMaProvider::FindReferencedShortcutQI"},
    VexFailureRecord{F::QuerySubjectNotOne, I::NotOneObject, Provider, 1171, FindItem},
    VexFailureRecord{F::SubjectShortcutNotOne, I::NotOneObject, Provider, 1192, FindItem},
    VexFailureRecord{F::SubjectShortcutDangling, I::ShortcutDangling, Provider, 1214, FindItem},
    VexFailureRecord{F::NoQuerySubjectOrShortcut, I::NameNotFound, Provider, 1263, FindItem},
    VexFailureRecord{F::QuerySubjectNotInNamespace, I::NameNotFound, Provider, 1357, FindItem},
    VexFailureRecord{F::ItemWithoutFolders, I::NameNotFound, Provider, 1398, FindItem},
    VexFailureRecord{F::ItemNotInFolders, I::NameNotFound, Provider, 1414, FindItem},
    VexFailureRecord{F::ShortcutTargetUnknown, I::ShortcutTargetUnknown, Provider, 550,
                     "VexMDMaProvider::FindShortcutReference"},
    VexFailureRecord{F::WrittenShortcutDangling, I::ShortcutDangling, Provider, 2080,
                     "VexMDMaProvider::processShortCutCollection"},
    VexFailureRecord{F::ModelWithoutViews, I::ModelWithoutViews, Engine, 0, Populate},
    VexFailureRecord{F::NoRequestedView, I::ViewUnavailable, Engine, 0, Populate},
    VexFailureRecord{F::ProviderWithoutSource, I::NoSecuritySource, Provider, 0, ProviderInfo},
    VexFailureRecord{F::ProviderWithoutViews, I::NoViewOrRole, Provider, 0, ProviderInfo},
    VexFailureRecord{F::AccessWithoutSource, I::NoSecuritySource, Access, 0, AccessInfo},
    VexFailureRecord{F::AccessWithoutViews, I::NoViewOrRole, Access, 0, AccessInfo},
    VexFailureRecord{F::AccessWithoutRoles, I::NoViewOrRole, Access, 0, AccessInfo},
};

// A failure is its own row number.
constexpr bool rowsInOrder() {
    for (std::size_t row = 0; row < Failures.size(); ++row) {
        if (static_cast<std::size_t>(Failures[row].failure) != row) {
            return false;
        }
    }
    return true;
}
static_assert(rowsInOrder());

} // namespace

VexFailureRecord const& FindFailure(VexFailure failure) {
    return Failures[static_cast<std::size_t>(failure)];
}

void RaiseFailure(VexFailure failure, std::initializer_list<I18NString> parameters, int line) {
    VexFailureRecord const& row = FindFailure(failure);
    VexMessage message(row.id);
    for (I18NString const& parameter : parameters) {
        message << KRLMessageParm(parameter);
    }
    VexException exception(row.id);
    exception << message;
    exception.raise({row.source, row.line != 0 ? row.line : line}, row.function, "KRL_THROW");
}
