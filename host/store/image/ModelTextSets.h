#pragma once

#include "host/store/image/NameTable.h"
#include "host/store/image/TextRefSet.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vex {

/// The sets of texts that a model has ready, each made when first asked for. All of them
/// together hold a few texts for each element of the model: what is more is not kept, and
/// whoever asks reads the texts. While a set is being made nobody waits for it: others are
/// told that there is none yet.
///
/// Threads: any. A set is handed out under a lock and asked without one.
class ModelTextSets {
public:
    /// Values of elements below one of the model's elements.
    struct Question {
        std::uint32_t element;
        Atom within;
        Atom name;
        Atom tag;
        std::u16string text;

        auto operator<=>(Question const&) const = default;
    };

    explicit ModelTextSets(std::size_t elementCount) : m_room(TextsForEach * elementCount) {}

    std::size_t byteCount() const;

    /// One caller's turn to get a set, or to make it. What is not finished was never begun:
    /// the next one who asks makes it.
    class Turn {
    public:
        /// The sets are kept in `sets`, which must outlive this.
        Turn(ModelTextSets& sets, Question question);
        Turn(Turn const&) = delete;
        Turn& operator=(Turn const&) = delete;
        ~Turn();

        /// False when the set is there, or is not to be made by this caller.
        bool isToMake() const { return m_isToMake; }
        /// The set that is there, or null.
        std::shared_ptr<VexTextSet const> set() const { return m_set; }

        /// Takes room for so many texts. False when there is none: from now on no set is made
        /// that is not there yet.
        bool takeRoom(std::size_t texts);
        /// The set is whole.
        void finish(std::shared_ptr<VexTextSet const> set);

    private:
        ModelTextSets& m_sets;
        std::map<Question, std::shared_ptr<VexTextSet const>>::iterator m_place;
        std::shared_ptr<VexTextSet const> m_set;
        std::size_t m_taken = 0;
        bool m_isToMake = false;
    };

private:
    /// A text that is listed stands in an element of its own, mostly within one set.
    static constexpr std::size_t TextsForEach = 4;

    mutable std::mutex m_mutex;
    std::map<Question, std::shared_ptr<VexTextSet const>> m_sets; // null: being made
    std::size_t m_room;                                           // for more texts
    std::size_t m_bytes = 0;
    bool m_isFull = false;
};

} // namespace vex
