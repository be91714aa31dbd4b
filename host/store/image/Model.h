#pragma once

#include "VexObjectModel.h"
#include "VexSession.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vex {

class ModelTextSets;
struct Shape;
struct StoreData;

/// A loaded model: immutable, shared by the sessions that opened it. Its objects
/// are valid until the last owner lets go of it. It answers from the arrays of
/// `StoreData`, which says what an image of a model consists of; the model adds
/// nothing to them but its range of handles and the sets of texts that it was asked for.
class Model final : public VexObjectModel, public VexObjectStore {
public:
    /// Takes a range of handles: the objects can be reached from then on.
    /// Raises `KRLLimitException` when the process has none left.
    explicit Model(std::unique_ptr<StoreData const> data);
    ~Model() override;

    VEX_HANDLE GetRootObject() const override;
    VEX_HANDLE GetObjectByReference(I18NString const& reference, long scope) const override;

    /// The element with that id; the null handle when there is none.
    VEX_HANDLE findById(I18NString const& id) const;

    /// Appends the element's reference, a "]" inside a name doubled so that the
    /// text names the element again. False for an element outside every
    /// namespace, and for a property.
    bool getReference(VEX_HANDLE element, I18NString& reference) const;

    /// The elements whose names make up that reference, outermost first; none when there
    /// is no reference.
    std::vector<VEX_HANDLE> namedByReference(VEX_HANDLE element) const;

    I18NLocale const& defaultLocale() const;
    /// The entries of the model's `locales`, in document order, each once.
    std::vector<I18NLocale> const& locales() const;

    std::size_t elementCount() const;
    /// The element with that index in document order; the root has 0. The null
    /// handle past the end.
    VEX_HANDLE getElement(std::size_t index) const;

    /// Where the element's start tag ends; nothing when the model was loaded
    /// without positions, or for a property.
    std::optional<DocumentPosition> findPosition(VEX_HANDLE element) const;

    /// The memory that the objects, their texts and the indexes take, that of a mapped file
    /// included, and the sets of texts that were made so far.
    std::size_t byteCount() const;

    /// What it answers from, for who writes it down.
    StoreData const& data() const { return *m_data; }

    bool IsObject(VEX_HANDLE object) const override;
    bool GetId(VEX_HANDLE object, I18NString& id) const override;
    bool GetName(VEX_HANDLE object, I18NString& name) const override;
    bool GetClass(VEX_HANDLE object, I18NString& name) const override;
    bool GetRole(VEX_HANDLE object, I18NString& role) const override;
    bool GetValue(VEX_HANDLE object, I18NString& value, bool resolve) const override;
    I18NLocale const* GetLocale(VEX_HANDLE object) const override;
    VEX_HANDLE GetParent(VEX_HANDLE object) const override;
    VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                 I18NLocale const* locale) const override;
    VEX_HANDLE GetPropertyByRole(VEX_HANDLE object, I18NString const& role,
                                 I18NLocale const* locale) const override;
    bool Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                    I18NString const* role) const override;
    bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                      I18NString const* role) const override;
    bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                              Vex_Handle_Collection& found) const override;
    bool hasChildObjects(VEX_HANDLE object) const override;
    bool hasProperties(VEX_HANDLE object) const override;
    std::size_t FindPropertyValue(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                  I18NLocale const* locale, I18NString const& text,
                                  VexTextMatch& match) const override;
    void FindElementsWithin(std::span<VEX_HANDLE const> objects, I18NString const& name,
                            I18NLocale const* locale, I18NString const& text, I18NString const& tag,
                            Vex_Handle_Collection& found) const override;
    std::shared_ptr<VexTextSet const> FindTextSet(VEX_HANDLE object, I18NString const& within,
                                                  I18NString const& name, I18NString const& text,
                                                  I18NString const& tag) const override;

private:
    // The range of handles: the elements, then the values of properties, then
    // the collection properties, each named by the first element that it holds.
    enum class Kind { Element, Value, Collection };
    struct DecodedHandle {
        Kind kind;
        std::uint32_t number; // of the element, or the index of the value
    };
    DecodedHandle decode(VEX_HANDLE object) const {
        std::uint32_t const offset = object.Number() - FirstHandle();
        if (offset < m_elementCount) {
            return {Kind::Element, offset};
        }
        return offset < m_collectionOffset
                   ? DecodedHandle{Kind::Value, offset - m_elementCount}
                   : DecodedHandle{Kind::Collection, offset - m_collectionOffset};
    }
    VEX_HANDLE elementHandle(std::uint32_t element) const {
        return VEX_HANDLE(FirstHandle() + element);
    }
    VEX_HANDLE valueHandle(std::uint32_t value) const {
        return VEX_HANDLE(FirstHandle() + m_elementCount + value);
    }
    VEX_HANDLE collectionHandle(std::uint32_t first) const {
        return VEX_HANDLE(FirstHandle() + m_collectionOffset + first);
    }

    /// By far the most is asked for names.
    static bool isName(I18NString const& property);

    /// The simple properties of an element or of a property.
    struct SimpleProperties {
        Shape const* shape; // null: it has none
        std::uint32_t firstValue;
    };
    SimpleProperties findSimpleProperties(DecodedHandle decoded) const;
    VEX_HANDLE simpleProperty(SimpleProperties const& of, std::uint32_t offset) const;
    VEX_HANDLE findProperty(DecodedHandle decoded, I18NString const& name,
                            I18NLocale const* locale) const;
    VEX_HANDLE findCollection(std::uint32_t element, std::uint32_t cls) const;
    void appendCollections(std::uint32_t element, Vex_Handle_Collection& found,
                           I18NString const* name) const;
    void appendElementsOf(std::uint32_t element, std::uint32_t cls,
                          Vex_Handle_Collection& found) const;
    void appendChildren(std::uint32_t element, Vex_Handle_Collection& found,
                        I18NString const* role) const;
    void appendChildrenOf(std::uint32_t element, std::uint32_t cls, Vex_Handle_Collection& found,
                          I18NString const* role) const;
    bool hasRole(std::uint32_t element, I18NString const& role) const;
    class ValueSearch;
    bool giveText(std::uint32_t text, I18NString& target) const;

    std::shared_ptr<StoreData const> m_data; // with the sets, which may be kept for longer
    std::unique_ptr<ModelTextSets> m_textSets;
    std::uint32_t m_elementCount = 0;
    std::uint32_t m_collectionOffset = 0;
};

} // namespace vex
