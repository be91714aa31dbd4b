#include "VexObjectModel.h"

#include "KRLException.h"
#include "VexObject.h"

#include <algorithm>
#include <mutex>
#include <string>

namespace {

std::mutex& rangesMutex() {
    static std::mutex mutex;
    return mutex;
}

// Page 0 holds the null handle and is never given out.
std::uint32_t nextFreePage = 1;

constexpr std::uint32_t pageSize = 1U << VexObjectDirectory::PageBits;

std::uint32_t pagesFor(std::uint32_t count) {
    return std::max<std::uint32_t>(1, count / pageSize + (count % pageSize != 0 ? 1 : 0));
}

bool isInside(VEX_HANDLE object, VEX_HANDLE outer) {
    VEX_HANDLE above = outer.IsNotNull() ? VexObject(object).GetParent() : VEX_HANDLE();
    while (above.IsNotNull() && above != outer) {
        above = VexObject(above).GetParent();
    }
    return above.IsNotNull();
}

} // namespace

VexTextSet::~VexTextSet() = default;

std::atomic<VexObjectModel const*> VexObjectDirectory::s_pages[VexObjectDirectory::PageCount];

std::uint32_t VexObjectModel::TakeHandles(std::uint32_t count) {
    std::lock_guard const lock(rangesMutex());
    if (m_first != 0) { // a second range would outlive the model
        throw KRLException("A model takes its handles once. Take as many as it needs when it is "
                           "complete.");
    }
    std::uint32_t const pages = pagesFor(count);
    std::uint32_t const left = VexObjectDirectory::PageCount - nextFreePage;
    if (pages > left) {
        throw KRLLimitException("A model of " + std::to_string(count) +
                                " objects was to be loaded, but this process has handles for " +
                                std::to_string(std::uint64_t{left} * pageSize) +
                                " more. Start a new process.");
    }
    std::uint32_t const firstPage = nextFreePage;
    nextFreePage += pages;
    m_first = firstPage * pageSize;
    m_count = count;
    for (std::uint32_t page = firstPage; page < nextFreePage; ++page) {
        VexObjectDirectory::s_pages[page].store(this, std::memory_order_release);
    }
    return m_first;
}

VexObjectModel::~VexObjectModel() {
    if (m_first == 0) {
        return;
    }
    std::lock_guard const lock(rangesMutex());
    std::uint32_t const firstPage = m_first / pageSize;
    std::uint32_t const pastLastPage = firstPage + pagesFor(m_count);
    for (std::uint32_t page = firstPage; page < pastLastPage; ++page) {
        VexObjectDirectory::s_pages[page].store(nullptr, std::memory_order_release);
    }
}

std::size_t VexObjectModel::FindPropertyValue(std::span<VEX_HANDLE const> objects,
                                              I18NString const& name, I18NLocale const* locale,
                                              I18NString const& text, VexTextMatch& match) const {
    match = VexTextMatch::Different;
    I18NString value;
    for (std::size_t before = 0; before != objects.size(); ++before) {
        VexObject const property(GetPropertyByName(objects[before], name, locale));
        if (!property.IsValid() || !property.GetValue(value, true)) {
            match = VexTextMatch::NoText;
            return before;
        }
        if (value == text) {
            match = VexTextMatch::Same;
            return before;
        }
    }
    return objects.size();
}

void VexObjectModel::FindElementsWithin(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                        I18NLocale const* locale, I18NString const& text,
                                        I18NString const& tag, Vex_Handle_Collection& found) const {
    VEX_HANDLE taken;
    I18NString value;
    for (VEX_HANDLE const object : objects) {
        VexObject const property(GetPropertyByName(object, name, locale));
        if (property.IsValid() && property.GetValue(value, true) && value == text &&
            IsObject(object) && !isInside(object, taken)) {
            taken = object;
            getElementsByTagName(object, tag, found);
        }
    }
}

std::shared_ptr<VexTextSet const> VexObjectModel::FindTextSet(VEX_HANDLE /*object*/,
                                                              I18NString const& /*within*/,
                                                              I18NString const& /*name*/,
                                                              I18NString const& /*text*/,
                                                              I18NString const& /*tag*/) const {
    return nullptr;
}
