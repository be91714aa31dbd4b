#include "host/store/image/ImageFile.h"

#include "KRLException.h"
#include "host/import/xml/ModelDocument.h"
#include "tests/host/store/image/ModelProbe.h"
#include "tests/host/store/image/SealedImage.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

namespace {

using testing::HasSubstr;
using Probe = ModelProbe;

constexpr char smallModel[] = R"xml(<model id="m" defaultLocale="en">
<locales><locale>en</locale><locale>de-AT</locale></locales>
<namespace id="n"><property name="name" locale="en">Sales</property>
<property name="name" locale="de_AT" role="r">Vertrieb<property name="p"><property name="q">v
</property></property></property>
<querySubject id="q" name="Orders" class="c" role="t"><queryItem id="i" name="Total"/>text
</querySubject></namespace></model>)xml";

std::string imageOf(std::string const& document, bool keepPositions = false) {
    vex::LoadOptions options;
    options.keepPositions = keepPositions;
    return vex::imageBytesOf(*vex::loadModelText(document, "test.model.xml", options));
}

/// What is said of an image that is refused; "" for one that is opened.
std::string refusalOf(std::string const& image, vex::ImageLimits const& limits = {}) {
    try {
        vex::openImageBytes(image, "test.vexm", limits);
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return {};
}

/// Asks every question of every object.
std::size_t askAll(vex::Model const& model) {
    std::size_t found = 0;
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const object = model.getElement(index);
        I18NString text;
        model.getReference(object, text);
        found += model.GetObjectByReference(text, 0).IsNotNull() ? 1U : 0U;
        found += model.findById(Probe::idOf(object).c_str()).IsNotNull() ? 1U : 0U;
        for (VEX_HANDLE const property : Probe::properties(object)) {
            I18NLocale const* const locale = VexObject(property).GetLocale();
            found += locale != nullptr && !locale->getName().empty() ? 1U : 0U;
            found += VexObject(property).GetParent() == object ? 1U : 0U;
            found += Probe::text(property).size() + Probe::properties(property).size();
        }
        found += Probe::value(object, "name", "de").size() + Probe::name(object).size();
        found += Probe::children(object).size() + Probe::below(object, "queryItem").size();
        model.findPosition(object);
        auto const set =
            VexObject(object).FindTextSet("namespace", "name", "Sales", "querySubject");
        if (set != nullptr) {
            std::vector<std::u16string_view> texts;
            set->appendTo(texts);
            found += texts.size() + (set->contains("text") ? 1U : 0U);
        }
    }
    return found + vex::modelDocumentOf(model).size();
}

TEST(ImageFile, SaysWhatTheModelSaysThatItWasMadeOf) {
    auto const model = vex::openImageBytes(imageOf(smallModel), "test.vexm");
    EXPECT_EQ(model->elementCount(), 4U);
    EXPECT_EQ(model->defaultLocale().getName().toUtf8(), "en");
    ASSERT_EQ(model->locales().size(), 2U);
    EXPECT_EQ(model->locales()[1].getName().toUtf8(), "de_AT");
    VEX_HANDLE const space = model->findById("n");
    EXPECT_EQ(Probe::value(space, "name", "de_AT"), "Vertrieb");
    EXPECT_EQ(Probe::value(space, "name"), "Sales");
    VEX_HANDLE const german = Probe::property(space, "name", "de_AT");
    EXPECT_EQ(VexObject(german).GetLocale()->getName().toUtf8(), "de_AT");
    EXPECT_EQ(Probe::value(Probe::property(german, "p"), "q"), "v");
    EXPECT_EQ(Probe::idOf(model->GetObjectByReference("[Sales].[Orders].[Total]", 0)), "i");
    EXPECT_FALSE(model->findPosition(space).has_value());
}

TEST(ImageFile, KeepsPositionsOfAModelThatHasThem) {
    auto const model = vex::openImageBytes(imageOf(smallModel, true), "test.vexm");
    auto const position = model->findPosition(model->findById("q"));
    ASSERT_TRUE(position.has_value());
    EXPECT_EQ(position->line, 6U);
}

TEST(ImageFile, IsTheSameToTheByteForOneDocumentAndHoldsNoMemoryThatNobodySet) {
    ::mallopt(M_PERTURB, 0x55); // what new memory holds
    std::string const image = imageOf(smallModel, true);
    ::mallopt(M_PERTURB, 0xAA);
    bool const isSame = image == imageOf(smallModel, true);
    ::mallopt(M_PERTURB, 0);
    EXPECT_TRUE(isSame);
}

TEST(ImageFile, IsRefusedWhateverByteOfItIsDamaged) {
    std::string image = imageOf(smallModel);
    ASSERT_EQ(refusalOf(image), "");
    for (std::size_t at = 0; at < image.size(); ++at) {
        for (char const flipped : {'\x01', '\x80'}) {
            image[at] = static_cast<char>(image[at] ^ flipped);
            ASSERT_THAT(refusalOf(image), HasSubstr("test.vexm: cannot be used as the image of a "
                                                    "model: "))
                << at;
            image[at] = static_cast<char>(image[at] ^ flipped);
        }
    }
}

TEST(ImageFile, IsRefusedWhereverItIsCutOff) {
    std::string const image = imageOf(smallModel);
    for (std::size_t length = 0; length < image.size(); ++length) {
        ASSERT_NE(refusalOf(image.substr(0, length)), "") << length;
    }
    EXPECT_NE(refusalOf(image + std::string(64, '\0')), "");
}

TEST(ImageFile, SaysWhyItIsRefused) {
    std::string const image = imageOf(smallModel);
    auto const withByte = [&](std::size_t at, char byte) {
        std::string changed = image;
        changed[at] = byte;
        return changed;
    };
    EXPECT_EQ(refusalOf(image.substr(0, 10)),
              "test.vexm: cannot be used as the image of a model: it is cut off; compile the "
              "model again");
    EXPECT_THAT(refusalOf(withByte(0, 'x')), HasSubstr("it does not begin like one"));
    EXPECT_THAT(refusalOf(withByte(8, 1)), HasSubstr("another byte order"));
    EXPECT_THAT(refusalOf(withByte(12, 9)),
                HasSubstr("it has the format 9, and this program reads the format 1"));
    EXPECT_THAT(refusalOf(image + "x"), HasSubstr(" bytes in place of "));
    EXPECT_THAT(refusalOf(withByte(image.size() - 1, 1)), HasSubstr("it is damaged"));
}

TEST(ImageFile, ThatWasMadeUpIsRefusedOrAnswersEveryQuestion) {
    std::string const image = imageOf(smallModel, true);
    std::size_t refused = 0;
    std::size_t opened = 0;
    for (std::size_t at = sizeof(vex::ImageFormat::Header) - 48; at + 4 <= image.size(); at += 4) {
        std::uint32_t before = 0;
        std::memcpy(&before, image.data() + at, sizeof before);
        for (std::uint32_t const value : {0U, 1U, before + 1, before - 1, 2 * before, 0xFFU,
                                          0xFFFFU, 0x7FFF'FFFFU, 0xFFFF'FFFEU, 0xFFFF'FFFFU}) {
            std::string changed = image;
            std::memcpy(changed.data() + at, &value, sizeof value);
            sealImage(changed);
            try {
                auto const model = vex::openImageBytes(changed, "test.vexm");
                ++opened;
                EXPECT_GT(askAll(*model), 0U);
            } catch (KRLDocumentException const&) {
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 1'000U);
    EXPECT_GT(opened, 1'000U);
}

TEST(ImageFile, OfAModelThatIsNestedTooDeepIsRefused) {
    std::string const document = "<model><a><b><c/></b></a></model>";
    vex::ImageLimits limits;
    limits.depth = 4;
    EXPECT_EQ(refusalOf(imageOf(document), limits), "");
    limits.depth = 3;
    EXPECT_THAT(refusalOf(imageOf(document), limits), HasSubstr("nested deeper"));
}

class ImageFolder {
public:
    ImageFolder() {
        std::string name = testing::TempDir() + "vex-image-XXXXXX";
        m_folder = ::mkdtemp(name.data());
    }
    ~ImageFolder() { std::filesystem::remove_all(m_folder); }
    std::string file(std::string const& name) const { return m_folder / name; }
    std::size_t fileCount() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(m_folder), {}));
    }

private:
    std::filesystem::path m_folder;
};

TEST(ImageFile, IsPutInPlaceWholeAndStaysForThoseWhoHaveItOpen) {
    ImageFolder const folder;
    std::string const file = folder.file("m.vexm");
    auto const first = vex::loadModelText("<model><a id='old'/></model>", "m");
    auto const second = vex::loadModelText("<model><a id='new'/></model>", "m");
    vex::writeImage(*first, file);
    EXPECT_TRUE(vex::isImageFile(file));
    auto const opened = vex::openImage(file);
    vex::writeImage(*second, file);
    EXPECT_TRUE(opened->findById("old").IsNotNull());
    EXPECT_TRUE(vex::openImage(file)->findById("new").IsNotNull());
    EXPECT_EQ(folder.fileCount(), 1U);
}

TEST(ImageFile, ThatCannotBeWrittenLeavesNothingBehind) {
    ImageFolder const folder;
    auto const model = vex::loadModelText("<model/>", "m");
    std::filesystem::create_directory(folder.file("taken"));
    EXPECT_THROW(vex::writeImage(*model, folder.file("taken")), KRLDocumentException);
    EXPECT_THROW(vex::writeImage(*model, folder.file("no/m.vexm")), KRLDocumentException);
    EXPECT_EQ(folder.fileCount(), 1U);
}

TEST(ImageFile, IsAFileWithinTheLimit) {
    ImageFolder const folder;
    std::string const file = folder.file("m.vexm");
    vex::writeImage(*vex::loadModelText("<model/>", "m"), file);
    try {
        vex::openImage(file, {.bytes = 100, .raisedBy = "--max-model"});
        FAIL();
    } catch (KRLDocumentException const& problem) {
        EXPECT_THAT(problem.what(), HasSubstr("is longer than 100 bytes, which is the limit; "
                                              "raise it with --max-model"));
    }
    EXPECT_THROW(vex::openImage(folder.file("")), KRLDocumentException);
    EXPECT_THROW(vex::openImage(folder.file("none")), KRLDocumentException);
    EXPECT_FALSE(vex::isImageFile(folder.file("none")));
    EXPECT_FALSE(vex::isImageFile(folder.file("")));
}

} // namespace
