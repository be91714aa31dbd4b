#include "VexObject.h"
#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/ImageFile.h"
#include "tests/naive/ModelGenerator.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

using naive::Handle;
using naive::Text;

I18NString toString(Text const& text) {
    return I18NString(std::u16string_view(text));
}

/// Asks both models the same and notes which object stands for which.
class Comparison {
public:
    Comparison(vex::Model const& model, naive::PlainModel const& plain)
        : m_model(model), m_plain(plain) {}

    void run() {
        collect(m_plain.root());
        for (Handle const element : m_elements) {
            meet(m_model.getElement(m_met.size()), element);
        }
        ASSERT_EQ(m_model.elementCount(), m_elements.size());
        for (Handle const element : m_elements) {
            compareElement(element);
        }
    }

    std::size_t referencesMet() const { return m_referencesMet; }

private:
    void collect(Handle element) {
        m_elements.push_back(element);
        for (auto const& child : element->children) {
            collect(child.get());
        }
    }

    // One object stands for one object, whichever way leads to it.
    void meet(VEX_HANDLE object, Handle plain) {
        ASSERT_EQ(object.IsNotNull(), plain != nullptr);
        if (plain == nullptr) {
            return;
        }
        auto const [met, isNew] = m_met.emplace(plain, object.Number());
        ASSERT_EQ(met->second, object.Number());
        if (isNew) {
            ASSERT_TRUE(m_objects.insert(object.Number()).second);
            if (plain->kind != naive::Kind::Element) {
                compareProperty(object, plain);
            }
        }
    }

    VEX_HANDLE objectOf(Handle plain) { return VEX_HANDLE(m_met.at(plain)); }

    void compareText(bool found, I18NString const& text, bool plainFound, Text const& plainText) {
        EXPECT_EQ(found, plainFound);
        EXPECT_EQ(text, toString(plainText));
    }

    void compareTexts(VEX_HANDLE object, Handle plain) {
        VexObject const view(object);
        ASSERT_TRUE(view.IsValid());
        I18NString name;
        I18NString value;
        I18NString id;
        I18NString role;
        I18NString cls;
        EXPECT_TRUE(view.GetName(name));
        EXPECT_EQ(name, toString(plain->cls));
        bool const hasValue = view.GetValue(value, true);
        compareText(hasValue, value, plain->value.has_value(), plain->value.value_or(Text()));
        bool const hasId = view.GetId(id);
        compareText(hasId, id, plain->id.has_value(), plain->id.value_or(Text()));
        bool const hasRole = view.GetRole(role);
        compareText(hasRole, role, plain->role.has_value(), plain->role.value_or(Text()));
        bool const hasClass = view.GetClass(cls);
        compareText(hasClass, cls, plain->ownClass.has_value(), plain->ownClass.value_or(Text()));
    }

    void compareList(Vex_Handle_Collection const& objects, naive::Handles const& plain) {
        ASSERT_EQ(objects.size(), plain.size());
        for (std::size_t i = 0; i < plain.size(); ++i) {
            meet(objects[i], plain[i]);
        }
    }

    void compareLists(VEX_HANDLE object, Handle plain) {
        VexObject const view(object);
        Vex_Handle_Collection children;
        view.childObjects(children, nullptr, nullptr);
        compareList(children, m_plain.childObjects(plain));
        EXPECT_EQ(view.hasChildObjects(), m_plain.hasChildObjects(plain));
        Vex_Handle_Collection properties;
        view.Properties(properties, nullptr, nullptr, false);
        compareList(properties, m_plain.properties(plain));
        EXPECT_EQ(view.hasProperties(), m_plain.hasProperties(plain));
        for (char16_t const* const tag :
             {u"a", u"b", u"folder", u"namespace", u"property", u"no"}) {
            Vex_Handle_Collection found;
            view.getElementsByTagName(I18NString(tag), found);
            compareList(found, m_plain.elementsByTagName(plain, tag));
        }
    }

    void compareLookups(VEX_HANDLE object, Handle plain) {
        VexObject const view(object);
        for (char16_t const* const name :
             {u"name", u"a", u"b", u"folder", u"ID", u"refobj", u"text", u"role", u"no"}) {
            I18NString const wanted(name);
            meet(view.GetPropertyByName(wanted, nullptr), m_plain.propertyByName(plain, name, u""));
            for (char16_t const* const locale :
                 {u"en", u"de", u"de_AT", u"de_CH", u"fr_FR", u"ja"}) {
                I18NLocale const asked{I18NString(locale)};
                meet(view.GetPropertyByName(wanted, &asked),
                     m_plain.propertyByName(plain, name, locale));
            }
        }
    }

    void compareParent(VEX_HANDLE object, Handle plain) {
        meet(VexObject(object).GetParent(), m_plain.getParent(plain));
    }

    void compareProperty(VEX_HANDLE object, Handle plain) {
        compareTexts(object, plain);
        compareParent(object, plain);
        compareLists(object, plain);
        compareLookups(object, plain);
        I18NLocale const* const locale = VexObject(object).GetLocale();
        EXPECT_EQ(locale == nullptr ? I18NString() : locale->getName(), toString(plain->locale));
    }

    void compareElement(Handle plain) {
        VEX_HANDLE const object = objectOf(plain);
        compareTexts(object, plain);
        compareParent(object, plain);
        compareLists(object, plain);
        compareLookups(object, plain);
        if (plain->id) {
            EXPECT_EQ(m_model.findById(toString(*plain->id)), object);
        }
        I18NString reference;
        bool const hasReference = m_model.getReference(object, reference);
        EXPECT_EQ(hasReference, m_plain.referenceOf(plain).has_value());
        if (hasReference) {
            ++m_referencesMet;
            Text const text(reference.view());
            meet(m_model.GetObjectByReference(reference, 0), m_plain.objectWithReference(text));
        }
    }

    vex::Model const& m_model;
    naive::PlainModel const& m_plain;
    std::vector<Handle> m_elements;
    std::map<Handle, std::uint32_t> m_met;
    std::set<std::uint32_t> m_objects;
    std::size_t m_referencesMet = 0;
};

using Made = std::shared_ptr<vex::Model const>;

/// Makes the model in one of several ways, which all come to the same.
void compareRandomModels(Made (*make)(std::string const& document)) {
    std::size_t references = 0;
    for (unsigned seed = 1; seed <= 600; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        naive::Random random(seed);
        std::string const text = naive::generateOddModel(random, 12);
        auto const model = make(text);
        naive::PlainModel const plain(text);
        Comparison comparison(*model, plain);
        comparison.run();
        if (testing::Test::HasFailure()) {
            FAIL() << text;
        }
        references += comparison.referencesMet();
    }
    EXPECT_GT(references, 1'000U);
}

Made readModel(std::string const& document) {
    return vex::loadModelText(document, "random.model.xml");
}

TEST(ModelComparison, AnswersLikeAPlainTreeOnRandomModels) {
    compareRandomModels(&readModel);
}

TEST(ModelComparison, OfImagesAnswersLikeAPlainTree) {
    compareRandomModels([](std::string const& document) {
        return vex::openImageBytes(vex::imageBytesOf(*readModel(document)), "random.vexm");
    });
}

TEST(ModelComparison, OfDocumentsThatWereWrittenAgainAnswersLikeAPlainTree) {
    compareRandomModels([](std::string const& document) {
        return readModel(vex::modelDocumentOf(*readModel(document)));
    });
}

} // namespace
