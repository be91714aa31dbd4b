#include "model/VexFailure.h"

#include "KRLException.h"
#include "VexMessageTexts.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

namespace {

using F = VexFailure;

// What hosts match on. Line 0: the line of the source that raises.
VexFailureRecord const records[] = {
    {F::MetadataParameterType, 1444379511, "VexMAAction", 83, "VexAction::validateParameter"},
    {F::AccessParameterType, 1444379511, "VexAccessAction", 0, "VexAction::validateParameter"},
    {F::ActionEntryMissing, 1444379512, "VexMAActionPlugin", 0, "VexMAActionPlugin::DoAction"},
    {F::MetadataElementMissing, 1444379513, "VexMDMaProvider", 0, "VexMDMaProvider::doRequest"},
    {F::OutputTooDeep, 1444379514, "VexMDMaProvider", 0,
     "VexMDMaProvider::GetRequestedElementTreeAtLevel"},
    {F::StartPathMalformed, 1170869272, "VexMDMaProvider", 145, "VexMDMaProvider::doRequest"},
    {F::EngineWithoutViews, 1170699671, "VexMDMaProvider", 212, "VexMDMaProvider::getAccessEngine"},
    {F::RequestedViewUnavailable, 1170551942, "VexMDMaProvider", 241,
     "VexMDMaProvider::getAccessEngine"},
    {F::ModelWithoutNamespace, 1170809568, "VexMDMaProvider", 589,
     "VexMDMAProvider::ProcessRequest"},
    {F::RootNameMalformed, 1170869272, "VexMDMaProvider", 615, "VexMDMAProvider::ProcessRequest"},
    {F::FirstStepNotOne, 1171025905, "VexMDMaProvider", 699, "VexMDMaProviderR::ProcessRequest"},
    {F::LastNameNotFound, 1171025905, "VexMDMaProvider", 780, "VexMDMaProviderR::ProcessRequest"},
    {F::PastLastCollection, 1171025905, "VexMDMaProvider", 788, "VexMDMaProviderR::ProcessRequest"},
    {F::FirstNameNotFound, 1171025905, "VexMDMaProvider", 808, "VexMDMaProviderR::ProcessRequest"},
    {F::ReferencedMemberLost, 1170653716, "VexMDMaProvider", 855,
     "VexMDMaProvider::processStartAtRefRequest"},
    {F::ReferenceNameCount, 1171135124, "VexMDMaProvider", 866,
     "VexMDMaProvider::processStartAtRefRequest"},
    {F::ReferencedItemLost, 1170653716, "VexMDMaProvider", 885,
     "VexMDMaProvider::processStartAtRefRequest"},
    {F::ReferencedItemNotFound, 1171025905, "VexMDMaProvider", 898,
     "VexMDMaProvider::processStartAtRefRequest"},
    {F::FilterNotOne, 1170968146, "VexMDMaProvider", 949,
     "VexMDMaProvider::findReferencedFilterOrCalculation"},
    {F::CalculationNotOne, 1170968146, "VexMDMaProvider", 971,
     "VexMDMaProvider::findReferencedFilterOrCalculation"},
    {F::ShortcutNotOne, 1170968146, "VexMDMaProvider", 995,
     "VexMDMaProvider::findReferencedFilterOrCalculation"},
    {F::ModelWithoutShortcut, 1170653716, "VexMDMaProvider", 1080,
     "VexMDMaProvider::FindReferencedShortcutQI"},
    {F::QuerySubjectNotOne, 1170968146, "VexMDMaProvider", 1171,
     "VexMDMaProvider::FindReferencedItem"},
    {F::SubjectShortcutNotOne, 1170968146, "VexMDMaProvider", 1192,
     "VexMDMaProvider::FindReferencedItem"},
    {F::SubjectShortcutDangling, 1170588191, "VexMDMaProvider", 1214,
     "VexMDMaProvider::FindReferencedItem"},
    {F::NoQuerySubjectOrShortcut, 1171025905, "VexMDMaProvider", 1263,
     "VexMDMaProvider::FindReferencedItem"},
    {F::QuerySubjectNotInNamespace, 1171025905, "VexMDMaProvider", 1357,
     "VexMDMaProvider::FindReferencedItem"},
    {F::ItemWithoutFolders, 1171025905, "VexMDMaProvider", 1398,
     "VexMDMaProvider::FindReferencedItem"},
    {F::ItemNotInFolders, 1171025905, "VexMDMaProvider", 1414,
     "VexMDMaProvider::FindReferencedItem"},
    {F::ShortcutTargetUnknown, 1171122674, "VexMDMaProvider", 550,
     "VexMDMaProvider::FindShortcutReference"},
    {F::WrittenShortcutDangling, 1170588191, "VexMDMaProvider", 2080,
     "VexMDMaProvider::processShortCutCollection"},
    {F::ModelWithoutViews, 1170839636, "VexMDAccessEngine", 0,
     "VexMDAccessEngine::populateAccessInfo"},
    {F::NoRequestedView, 1170551942, "VexMDAccessEngine", 0,
     "VexMDAccessEngine::populateAccessInfo"},
    {F::ProviderWithoutSource, 1444335572, "VexMDMaProvider", 0,
     "VexMDMaProvider::RetrieveSecurityInfo"},
    {F::ProviderWithoutViews, 1170699671, "VexMDMaProvider", 0,
     "VexMDMaProvider::RetrieveSecurityInfo"},
    {F::AccessWithoutSource, 1444335572, "VexAccessAction", 0,
     "VexAccessAction::RetrieveSecurityInfo"},
    {F::AccessWithoutViews, 1170699671, "VexAccessAction", 0,
     "VexAccessAction::RetrieveSecurityInfo"},
    {F::AccessWithoutRoles, 1170699671, "VexAccessAction", 0,
     "VexAccessAction::RetrieveSecurityInfo"},
};

} // namespace

// covers quirk: failure-names-not-uniform
TEST(VexFailure, EveryFailureIsRaisedWithItsIdSourceLineAndFunction) {
    for (VexFailureRecord const& record : records) {
        expectFailure([&] { RaiseFailure(record.failure); }, record.id, record.source, record.line,
                      record.function);
    }
}

TEST(VexFailure, EveryFailureHasARecordHere) {
    std::size_t const failures = static_cast<std::size_t>(F::AccessWithoutRoles) + 1;
    ASSERT_EQ(std::size(records), failures);
    for (std::size_t row = 0; row < failures; ++row) {
        EXPECT_EQ(static_cast<std::size_t>(records[row].failure), row);
    }
}

TEST(VexFailure, EveryFailureHasAMessageTextOfItsOwn) {
    for (VexFailureRecord const& record : records) {
        EXPECT_NE(VexFindMessageText(record.id), nullptr) << record.id;
    }
}

TEST(VexFailure, ParametersStandInTheMessageInTheOrderGiven) {
    expectFailure(
        [] {
            RaiseFailure(VexFailure::RequestedViewUnavailable, {"v1, v2", "", "v3"});
        },
        1170551942, "VexMDMaProvider", 241, "VexMDMaProvider::getAccessEngine",
        {"v1, v2", "", "v3"});
}

TEST(VexFailure, AFailureWithoutALineOfItsOwnCarriesTheLineThatRaises) {
    int const line = __LINE__ + 1;
    expectFailure([] { RaiseFailure(VexFailure::ModelWithoutViews); }, 1170839636,
                  "VexMDAccessEngine", line, "VexMDAccessEngine::populateAccessInfo");
}

TEST(VexFailure, EveryFailureReachesAHostThatCatchesTheCommonException) {
    EXPECT_THROW(RaiseFailure(VexFailure::OutputTooDeep, {"[a]"}), KRLException);
}
