#include "host/store/image/Model.h"

#include "I18NHash.h"
#include "KRLException.h"
#include "host/store/image/Budget.h"
#include "host/store/image/ModelTextSets.h"
#include "host/store/image/ReferenceText.h"
#include "host/store/image/SameText.h"
#include "host/store/image/StoreData.h"

#include <algorithm>
#include <limits>
#include <string>

namespace vex {

namespace {

std::uint32_t handleCount(StoreData const& data) {
    std::uint64_t const count = 2 * std::uint64_t{data.elementCount()} + data.values.size();
    if (count > std::numeric_limits<std::int32_t>::max()) {
        throw KRLLimitException("the model has " + std::to_string(count) +
                                " objects, more than can be numbered; split the model");
    }
    return static_cast<std::uint32_t>(count);
}

bool namesElement(StoreData const& data, ElementNumber element,
                  std::vector<std::u16string> const& names) {
    ElementNumber at = element;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (at == NotFound || data.texts.view(data.nameOf(at)) != *name) {
            return false;
        }
        if (data.classOf(at) == data.namespaceName) {
            return name + 1 == names.rend();
        }
        do {
            at = data.elements[at].parent;
        } while (at != NotFound && data.isLeftOutOfReferences(data.classOf(at)));
    }
    return false;
}

} // namespace

Model::Model(std::unique_ptr<StoreData const> data)
    : m_data(std::move(data)), m_textSets(std::make_unique<ModelTextSets>(m_data->elementCount())),
      m_elementCount(m_data->elementCount()),
      m_collectionOffset(m_elementCount + static_cast<std::uint32_t>(m_data->values.size())) {
    TakeHandles(handleCount(*m_data));
}

Model::~Model() = default;

VEX_HANDLE Model::GetRootObject() const {
    return elementHandle(0);
}

VEX_HANDLE Model::GetObjectByReference(I18NString const& reference, long scope) const {
    Budget::charge();
    std::vector<std::u16string> names;
    if (scope != 0 || !splitReference(reference, names) || names.empty()) {
        return {};
    }
    std::uint64_t hash = firstReferenceHash(names.front(), m_data->hashSeed);
    for (auto name = names.begin() + 1; name != names.end(); ++name) {
        hash = nextReferenceHash(hash, *name, m_data->hashSeed);
    }
    ElementNumber const found = m_data->references.find(
        hash, [&](ElementNumber element) { return namesElement(*m_data, element, names); });
    return found == NotFound ? VEX_HANDLE() : elementHandle(found);
}

VEX_HANDLE Model::findById(I18NString const& id) const {
    ElementNumber const found =
        m_data->ids.find(I18NHashText(id.view(), m_data->hashSeed), [&](ElementNumber element) {
            return isSameText(m_data->texts.view(m_data->ownText(element, Own::Id)), id.view());
        });
    return found == NotFound ? VEX_HANDLE() : elementHandle(found);
}

bool Model::getReference(VEX_HANDLE element, I18NString& reference) const {
    std::vector<VEX_HANDLE> const named = namedByReference(element);
    for (VEX_HANDLE const each : named) {
        appendToReference(reference, m_data->texts.view(m_data->nameOf(decode(each).number)));
    }
    return !named.empty();
}

std::vector<VEX_HANDLE> Model::namedByReference(VEX_HANDLE element) const {
    std::vector<VEX_HANDLE> named;
    DecodedHandle const decoded = decode(element);
    if (!IsObject(element) || decoded.kind != Kind::Element) {
        return named;
    }
    std::vector<ElementNumber> const numbers = m_data->referenceOf(decoded.number);
    named.reserve(numbers.size());
    for (auto at = numbers.rbegin(); at != numbers.rend(); ++at) {
        named.push_back(elementHandle(*at));
    }
    return named;
}

I18NLocale const& Model::defaultLocale() const {
    return m_data->defaultLocale;
}

std::vector<I18NLocale> const& Model::locales() const {
    return m_data->locales;
}

std::size_t Model::elementCount() const {
    return m_elementCount;
}

VEX_HANDLE Model::getElement(std::size_t index) const {
    return index < m_elementCount ? elementHandle(static_cast<ElementNumber>(index)) : VEX_HANDLE();
}

std::optional<DocumentPosition> Model::findPosition(VEX_HANDLE element) const {
    DecodedHandle const decoded = decode(element);
    if (!IsObject(element) || decoded.kind != Kind::Element || m_data->positions.empty()) {
        return std::nullopt;
    }
    KeptPosition const at = m_data->positions[decoded.number];
    return DocumentPosition{at.line, at.column};
}

std::size_t Model::byteCount() const {
    return sizeof *this + m_data->byteCount() + m_textSets->byteCount();
}

} // namespace vex
