#include "KRLException.h"
#include "VexObject.h"
#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"
#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/ImageFile.h"
#include "tests/host/store/image/SealedImage.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr char smallModel[] = R"xml(<model id="m" defaultLocale="en">
<locales><locale>en</locale><locale>de-AT</locale></locales>
<namespace id="n"><property name="name" locale="en">Sales</property>
<property name="name" locale="de_AT" role="r">Vertrieb<property name="p"><property name="q">v
</property></property></property><folder id="f" name="Facts">
<querySubject id="q" name="Orders" class="c" role="t"><queryItem id="i" name="Total"/>text
</querySubject></folder><shortcut id="s" name="Again" refobj="[Sales].[Orders]"/></namespace>
<securityViews><securityView id="v"><set kind="included"><item>q</item></set></securityView>
</securityViews></model>)xml";

constexpr std::string_view whole =
    "<Metadata Depth='0'><Property n='*/@*'/><Property n='*/@_path'/><Property n='*/@_ref'/>"
    "<Property n='*/*'/><Property n='/@supportedLocales'/></Metadata>";

std::string const& soundImage() {
    static std::string const image = [] {
        vex::LoadOptions options;
        options.keepPositions = true;
        return vex::imageBytesOf(*vex::loadModelText(smallModel, "m.xml", options));
    }();
    return image;
}

/// Puts numbers into a sound image: where, how many bytes, which. What is left over is put at
/// its end.
std::string changedImage(std::string_view input) {
    struct Change {
        std::uint16_t place;
        std::uint8_t width;
        std::uint8_t unit; // of the place: bytes, or numbers of four bytes
        std::uint32_t value;
    };
    std::string image = soundImage();
    for (; input.size() >= sizeof(Change); input.remove_prefix(sizeof(Change))) {
        Change change{};
        std::memcpy(&change, input.data(), sizeof change);
        constexpr std::size_t words = 4;
        std::size_t const width = 1 + change.width % words;
        std::size_t const place =
            (change.unit % 2 == 0 ? words : 1) * change.place % (image.size() - width);
        std::memcpy(image.data() + place, &change.value, width);
    }
    return image.append(input);
}

void askEverything(std::shared_ptr<vex::Model const> const& model) {
    for (std::size_t index = 0; index < model->elementCount(); ++index) {
        VEX_HANDLE const element = model->getElement(index);
        VexObject const object(element);
        I18NString text;
        model->getReference(element, text);
        model->GetObjectByReference(text, 0);
        if (object.GetId(text)) {
            model->findById(text);
        }
        model->findPosition(element);
        Vex_Handle_Collection properties;
        object.Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            VexObject const value(property);
            value.GetName(text);
            value.GetParent();
            value.GetLocale();
            value.GetPropertyByName("p", nullptr);
        }
        Vex_Handle_Collection items;
        object.getElementsByTagName("queryItem", items);
    }
}

} // namespace

void fuzz::image(std::string_view input) {
    // Every other input has the checksum that it should have: what it says is looked at.
    bool const isSealed = !input.empty() && input.front() % 2 == 0;
    std::string changed = changedImage(input.substr(std::min<std::size_t>(input.size(), 1)));
    if (isSealed) {
        sealImage(changed);
    }
    std::shared_ptr<vex::Model const> model;
    try {
        model = vex::openImageBytes(changed, "m.vexm");
    } catch (KRLDocumentException const& problem) {
        require(changed != soundImage() && !problem.GetProblem().empty(),
                "a sound image is opened, and another one refused with a reason");
        return;
    }
    require(isSealed || changed == soundImage(), "a damaged image is refused");
    askEverything(model);
    vex::modelDocumentOf(*model);
    try {
        vex::MetadataAnswer const answer = request(visitAlone(model), whole);
        require(answer.response.elementCount() <= smallLimits().response.elements,
                "an answer keeps to its limit");
    } catch (KRLException const&) {
        // A text or a name that no answer can hold.
    }
}
