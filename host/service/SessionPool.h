#pragma once

#include "host/service/PluginProxy.h"
#include "host/service/Visit.h"

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>

namespace vex {

/// A session serves one kind of action from its first one on.
enum class SessionKind { Metadata, Access };

/// Sessions that are open and idle, kept for the next call of the same caller,
/// model version, language and kind: what a plug-in has worked out for them is
/// there already. Threads: any; no lock is held while a plug-in works.
class SessionPool {
    struct Entry {
        Visit visit;
        SessionKind kind;
        std::unique_ptr<HostSession> session;
    };
    using Entries = std::list<Entry>;

public:
    /// Keeps as many idle sessions as `mostIdle`; those that were idle longest
    /// go first.
    SessionPool(std::shared_ptr<PluginProxy> plugin, std::size_t mostIdle);
    /// Closes all sessions. Those in use must have been given back.
    ~SessionPool();
    SessionPool(SessionPool const&) = delete;
    SessionPool& operator=(SessionPool const&) = delete;

    /// A session for one call, which goes back when the loan goes.
    class Loan {
    public:
        Loan(SessionPool& pool, Entries entry) : m_pool(pool), m_entry(std::move(entry)) {}
        Loan(Loan const&) = delete;
        Loan& operator=(Loan const&) = delete;
        ~Loan();

        HostSession& session() { return *m_entry.front().session; }
        /// The session is closed and not kept: nobody knows what state it is in.
        void spoil() { m_isSpoilt = true; }

    private:
        SessionPool& m_pool;
        Entries m_entry; // one
        bool m_isSpoilt = false;
    };

    /// An idle session, or a new one. Raises what telling the plug-in about a
    /// new one raises.
    Loan take(Visit const& visit, SessionKind kind);

    std::size_t idleCount() const;

private:
    Entries open(Visit const& visit, SessionKind kind);
    void giveBack(Entries entry, bool isSpoilt);
    void close(Entries closing);
    bool tellClosed(HostSession& session) const;

    std::shared_ptr<PluginProxy> m_plugin;
    std::size_t m_mostIdle;
    mutable std::mutex m_mutex; // guards the two lists
    Entries m_idle;             // the one given back last in front
    Entries m_unclosed;         // memory ended their closing: closed with the next that is
};

} // namespace vex
