#pragma once

#include "I18NLocale.h"
#include "VexTextSet.h"
#include "Vex_Handle_Collection.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

/// How the text of a property compares with a text that is looked for.
enum class VexTextMatch {
    NoText,    ///< there is no such property, or it has no value
    Different, ///< it has another text
    Same,      ///< it has this text
};

/// What a host implements for each loaded model: the operations behind
/// `VexObject`, which describes their results.
///
/// A model owns one range of handle numbers. It takes the range before it gives
/// out a handle and must not be destroyed while a call on one of its objects is
/// under way. Every operation is called with a handle of the model's own range;
/// of those that `IsObject` denies, too.
///
/// The plug-in `VexMAActionPlugin` passes no filters, true for `resolve`, and looks
/// at the lists, not at the bools of what appends to them. It never calls `GetLocale`
/// and `GetPropertyByRole`; `GetClass` and `GetRole` serve a tree that no action asks
/// for. The names that it asks for stand in `docs/names.md`.
///
/// What the texts hold goes into answers as it stands. A text that XML cannot hold (a
/// control character, half of a surrogate pair) makes an answer that `KRLIDOM_Writer`
/// refuses to write, so a host leaves such characters out.
///
/// Threads: all operations may run at once; a loaded model does not change.
/// Raises: whatever the host likes; a plug-in lets it pass to whoever called
/// `DoAction`. `KRLLimitException` is for a call that the host ends.
class VEX_PLATFORM_API VexObjectModel {
public:
    VexObjectModel(VexObjectModel const&) = delete;
    VexObjectModel& operator=(VexObjectModel const&) = delete;

    /// True when the handle, one of the model's range, names an object.
    virtual bool IsObject(VEX_HANDLE object) const = 0;

    /// @{
    /// As the operation of that name in `VexObject`.
    virtual bool GetId(VEX_HANDLE object, I18NString& id) const = 0;
    virtual bool GetName(VEX_HANDLE object, I18NString& name) const = 0;
    virtual bool GetClass(VEX_HANDLE object, I18NString& name) const = 0;
    virtual bool GetRole(VEX_HANDLE object, I18NString& role) const = 0;
    virtual bool GetValue(VEX_HANDLE object, I18NString& value, bool resolve) const = 0;
    virtual I18NLocale const* GetLocale(VEX_HANDLE object) const = 0;
    virtual VEX_HANDLE GetParent(VEX_HANDLE object) const = 0;
    virtual VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                         I18NLocale const* locale) const = 0;
    virtual VEX_HANDLE GetPropertyByRole(VEX_HANDLE object, I18NString const& role,
                                         I18NLocale const* locale) const = 0;
    virtual bool Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                            I18NString const* role) const = 0;
    virtual bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& found,
                              I18NString const* name, I18NString const* role) const = 0;
    virtual bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                                      Vex_Handle_Collection& found) const = 0;
    virtual bool hasChildObjects(VEX_HANDLE object) const = 0;
    virtual bool hasProperties(VEX_HANDLE object) const = 0;
    /// @}

    /// As the operation of that name in `VexObject`, for objects of this model.
    /// Need not be overridden: it asks `GetPropertyByName` and `GetValue`, of no
    /// object behind the one it finds. A host that does saves searches most of
    /// their time; it must answer, raise and limit calls as those two do.
    virtual std::size_t FindPropertyValue(std::span<VEX_HANDLE const> objects,
                                          I18NString const& name, I18NLocale const* locale,
                                          I18NString const& text, VexTextMatch& match) const;

    /// As the operation of that name in `VexObject`, for objects of this model. Need not
    /// be overridden either: it asks `GetPropertyByName`, `GetValue`, `GetParent` and
    /// `getElementsByTagName`.
    virtual void FindElementsWithin(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                    I18NLocale const* locale, I18NString const& text,
                                    I18NString const& tag, Vex_Handle_Collection& found) const;

    /// As the operation of that name in `VexObject`, for an object of this model. Need not be
    /// overridden: it gives null, "none is ready", and the caller reads the texts one by one.
    /// A host may say so of some sets and not of others, and of one set now and not later.
    ///
    /// A host that overrides it makes a set once and hands it out again, to all threads; it
    /// keeps no more sets than its memory allows, and null for what does not fit is right.
    /// It must not offer sets where `GetValue` gives other texts to one caller than to
    /// another. What making a set raises, a limit of the host too, comes out; the set is then
    /// not there, and the next call makes it.
    virtual std::shared_ptr<VexTextSet const>
    FindTextSet(VEX_HANDLE object, I18NString const& within, I18NString const& name,
                I18NString const& text, I18NString const& tag) const;

    /// True when the handle is one of the model's own range.
    bool Holds(VEX_HANDLE handle) const { return handle.Number() - m_first < m_count; }

protected:
    VexObjectModel() = default;
    /// Gives the range back if one was taken: from here on its handles name
    /// nothing.
    virtual ~VexObjectModel();

    /// Takes `count` consecutive handle numbers that no model of this process ever had and
    /// gives the first. Raises `KRLLimitException` when the process has no such range left,
    /// `KRLException` when the model has its range already. Call it when the model is
    /// complete: its objects can be reached from then on. Threads: any.
    std::uint32_t TakeHandles(std::uint32_t count);

    /// @{
    /// The range that was taken; both 0 before.
    std::uint32_t FirstHandle() const { return m_first; }
    std::uint32_t HandleCount() const { return m_count; }
    /// @}

private:
    std::uint32_t m_first = 0;
    std::uint32_t m_count = 0;
};

/// Finds the model of a handle: one table for the process, read without a lock.
class VEX_PLATFORM_API VexObjectDirectory {
public:
    /// A model's range starts at a multiple of this, so that one entry of the
    /// table belongs to one model.
    static constexpr std::uint32_t PageBits = 12;
    /// How many entries the table has.
    static constexpr std::uint32_t PageCount = (1U << 31U) >> PageBits;

    /// The model that the handle's page belongs to, or null.
    static VexObjectModel const* Find(VEX_HANDLE handle) {
        std::uint32_t const page = handle.Number() >> PageBits;
        return page < PageCount ? s_pages[page].load(std::memory_order_acquire) : nullptr;
    }

private:
    friend class VexObjectModel;
    static std::atomic<VexObjectModel const*> s_pages[PageCount];
};
