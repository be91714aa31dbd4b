#include "VexFailure.h"

#include "VexException.h"

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

constexpr std::array Failures{
    VexFailureRecord{F::MetadataParameterType, 1444379511, Action, 83, Validate},
    VexFailureRecord{F::AccessParameterType, 1444379511, Access, 0, Validate},
    VexFailureRecord{F::ActionEntryMissing, 1444379512, Plugin, 0, "VexMAActionPlugin::DoAction"},
    VexFailureRecord{F::MetadataElementMissing, 1444379513, Provider, 0, Request},
    VexFailureRecord{F::OutputTooDeep, 1444379514, Provider, 0,
                     "VexMDMaProvider::GetRequestedElementTreeAtLevel"},
    VexFailureRecord{F::StartPathMalformed, 1170869272, Provider, 145, Request},
    VexFailureRecord{F::EngineWithoutViews, 1170699671, Provider, 212, GetEngine},
    VexFailureRecord{F::RequestedViewUnavailable, 1170551942, Provider, 241, GetEngine},
    VexFailureRecord{F::ModelWithoutNamespace, 1170809568, Provider, 589, ProcessRoot},
    VexFailureRecord{F::RootNameMalformed, 1170869272, Provider, 615, ProcessRoot},
    VexFailureRecord{F::FirstStepNotOne, 1171025905, Provider, 699, ProcessNames},
    VexFailureRecord{F::LastNameNotFound, 1171025905, Provider, 780, ProcessNames},
    VexFailureRecord{F::PastLastCollection, 1171025905, Provider, 788, ProcessNames},
    VexFailureRecord{F::FirstNameNotFound, 1171025905, Provider, 808, ProcessNames},
    VexFailureRecord{F::ReferencedMemberLost, 1170653716, Provider, 855, StartAtRef},
    VexFailureRecord{F::ReferenceNameCount, 1171135124, Provider, 866, StartAtRef},
    VexFailureRecord{F::ReferencedItemLost, 1170653716, Provider, 885, StartAtRef},
    VexFailureRecord{F::ReferencedItemNotFound, 1171025905, Provider, 898, StartAtRef},
    VexFailureRecord{F::FilterNotOne, 1170968146, Provider, 949, FindMember},
    VexFailureRecord{F::CalculationNotOne, 1170968146, Provider, 971, FindMember},
    VexFailureRecord{F::ShortcutNotOne, 1170968146, Provider, 995, FindMember},
    VexFailureRecord{F::ModelWithoutShortcut, 1170653716, Provider, 1080,
                     "VexMDMaProvider::FindReferencedShortcutQI"},
    VexFailureRecord{F::QuerySubjectNotOne, 1170968146, Provider, 1171, FindItem},
    VexFailureRecord{F::SubjectShortcutNotOne, 1170968146, Provider, 1192, FindItem},
    VexFailureRecord{F::SubjectShortcutDangling, 1170588191, Provider, 1214, FindItem},
    VexFailureRecord{F::NoQuerySubjectOrShortcut, 1171025905, Provider, 1263, FindItem},
    VexFailureRecord{F::QuerySubjectNotInNamespace, 1171025905, Provider, 1357, FindItem},
    VexFailureRecord{F::ItemWithoutFolders, 1171025905, Provider, 1398, FindItem},
    VexFailureRecord{F::ItemNotInFolders, 1171025905, Provider, 1414, FindItem},
    VexFailureRecord{F::ShortcutTargetUnknown, 1171122674, Provider, 550,
                     "VexMDMaProvider::FindShortcutReference"},
    VexFailureRecord{F::WrittenShortcutDangling, 1170588191, Provider, 2080,
                     "VexMDMaProvider::processShortCutCollection"},
    VexFailureRecord{F::ModelWithoutViews, 1170839636, Engine, 0, Populate},
    VexFailureRecord{F::NoRequestedView, 1170551942, Engine, 0, Populate},
    VexFailureRecord{F::ProviderWithoutSource, 1444335572, Provider, 0, ProviderInfo},
    VexFailureRecord{F::ProviderWithoutViews, 1170699671, Provider, 0, ProviderInfo},
    VexFailureRecord{F::AccessWithoutSource, 1444335572, Access, 0, AccessInfo},
    VexFailureRecord{F::AccessWithoutViews, 1170699671, Access, 0, AccessInfo},
    VexFailureRecord{F::AccessWithoutRoles, 1170699671, Access, 0, AccessInfo},
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
