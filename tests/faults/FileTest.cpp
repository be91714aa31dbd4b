// Files that cannot be read, give their bytes in pieces, or end too early.

#include "KRLException.h"
#include "host/catalogue/Catalogue.h"
#include "host/import/xml/FileText.h"
#include "host/import/xml/ModelLoader.h"
#include "host/protocol/LineReader.h"
#include "tests/faults/FailingFile.h"
#include "tests/faults/FaultModel.h"

#include <filesystem>
#include <fstream>
#include <functional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;

std::string readLines(std::string const& file) {
    int const descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    std::string all;
    try {
        vex::LineReader lines(descriptor, 1'000);
        for (std::string line; lines.next(line) == vex::LineReader::Result::Line;) {
            all += line + '\n';
        }
    } catch (...) {
        ::close(descriptor);
        throw;
    }
    ::close(descriptor);
    return all;
}

/// A kind of file: its content and how it is read.
struct FileKind {
    char const* name;
    char const* content;
    std::function<std::string(std::string const&)> read; // gives a summary
};

FileKind const kinds[] = {
    {"Model", faultModel,
     [](std::string const& file) {
         return std::to_string(vex::loadModel(file)->elementCount()) + " elements";
     }},
    {"Catalogue", faultCatalogue,
     [](std::string const& file) {
         return std::to_string(vex::loadCatalogue(file)->users.front().roles.size()) + " roles";
     }},
    {"Request", "<Metadata Depth=\"1\"/>",
     [](std::string const& file) { return vex::readFileText(file); }},
    {"SessionLines", "{\"notify\": 1}\n{\"notify\": 2}\n", readLines},
};

class File : public testing::TestWithParam<FileKind> {
protected:
    File()
        : m_file((std::filesystem::temp_directory_path() /
                  ("vex-file-faults-" + std::to_string(::getpid()) + ".xml"))
                     .string()) {
        std::ofstream(m_file) << GetParam().content;
    }
    ~File() override { std::filesystem::remove(m_file); }

    std::string Read() const { return GetParam().read(m_file); }
    std::string Complaint() const {
        try {
            return "no complaint, but " + Read();
        } catch (KRLDocumentException const& problem) {
            return problem.what();
        }
    }

    std::string const m_file;
};

TEST_P(File, ThatCannotBeReadIsNamedWithTheReasonWhicheverReadItIs) {
    std::size_t reads = 0;
    {
        FailingFile const whole;
        Read();
        reads = whole.reads;
    }
    ASSERT_GE(reads, 2U);
    for (std::size_t nth = 1; nth <= reads; ++nth) {
        FailingFile failing;
        failing.errorAt = nth;
        EXPECT_THAT(Complaint(), HasSubstr("cannot be read: Input/output error")) << nth;
    }
}

TEST_P(File, ThatComesInPiecesIsTheSameFile) {
    std::string const whole = Read();
    for (std::size_t const piece : {1, 2, 3, 7, 100}) {
        FailingFile slow;
        slow.piece = piece;
        EXPECT_EQ(Read(), whole) << piece;
    }
}

TEST_P(File, IsReadOnWhenASignalInterruptsIt) {
    std::string const whole = Read();
    for (std::size_t nth = 1; nth <= 2; ++nth) {
        FailingFile interrupted;
        interrupted.interruptionAt = nth;
        EXPECT_EQ(Read(), whole) << nth;
    }
}

class Document : public File {};

TEST_P(Document, ThatEndsTooEarlyIsRefusedWhereItEnds) {
    std::string const content = GetParam().content;
    for (std::size_t length = 0; length < content.rfind('>'); ++length) {
        FailingFile cut;
        cut.length = length;
        ASSERT_THAT(Complaint(), testing::StartsWith(m_file + ":")) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Document, testing::Values(kinds[0], kinds[1]),
                         [](auto const& tested) { return std::string(tested.param.name); });
INSTANTIATE_TEST_SUITE_P(Kinds, File, testing::ValuesIn(kinds),
                         [](auto const& tested) { return std::string(tested.param.name); });

TEST(FileNames, OfWhatIsNotThereOrNoFileAreRefused) {
    std::string const folder = std::filesystem::temp_directory_path().string();
    for (std::string const& name : {folder, folder + "/there-is-no-such-file.xml"}) {
        EXPECT_THROW(vex::loadModel(name), KRLDocumentException);
        EXPECT_THROW(vex::loadCatalogue(name), KRLDocumentException);
        EXPECT_THROW(vex::readFileText(name), KRLDocumentException);
    }
}

} // namespace
