#pragma once

#include "I18NLocale.h"
#include "VexHostExport.h"
#include "VexSession.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A model in memory, ready to be asked: read from a model document, or made from
/// rows by `VexModelRows`. It does everything that `VexObject` tells of a model.
///
/// It does not change, and its objects are valid as long as somebody holds it: share
/// it among the sessions that use it. Threads: any.
class VEX_HOST_API VexModel {
public:
    /// Reads a model document, or opens the image of one, which `vexma compile` makes and
    /// which is not written to meanwhile. Raises `KRLDocumentException`, with line and column,
    /// for the first error in it, and when the file cannot be read or is longer than a
    /// gibibyte; `KRLLimitException` when it holds more than a model can number;
    /// `std::bad_alloc`.
    static std::shared_ptr<VexModel const> readFile(std::string const& file);
    /// The same from text (UTF-8, or as its XML declaration says); `name` stands for
    /// the file in messages.
    static std::shared_ptr<VexModel const> readText(std::string_view xml, std::string const& name);

    VexModel(VexModel const&) = delete;
    VexModel& operator=(VexModel const&) = delete;
    ~VexModel();

    /// What a session gives as its objects. Lives as long as the model.
    VexObjectStore& store() const;

    /// The element with that id; the null handle when there is none.
    VEX_HANDLE findById(I18NString const& id) const;

    /// Appends the element's reference, a "]" inside a name doubled so that the
    /// text names the element again. False for an element outside of every
    /// namespace, and for a property.
    bool getReference(VEX_HANDLE element, I18NString& reference) const;

    /// @{
    /// The locales: the default one, and those that the model lists, in its order, each once.
    I18NLocale const& defaultLocale() const;
    std::vector<I18NLocale> const& locales() const;
    /// @}

    /// How many elements there are, the root counted.
    std::size_t elementCount() const;
    /// The memory that the objects, their texts and the indexes take, and the sets of ids that
    /// requests under security views made ready so far.
    std::size_t byteCount() const;

private:
    friend class VexCatalogue;
    friend class VexModelRows;
    struct State;
    explicit VexModel(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};
