#include "host/service/SessionPool.h"

#include "VexNotification.h"
#include "VexTrace.h"
#include "host/service/PluginException.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace vex {

namespace {

bool isSameCaller(Visit const& a, Visit const& b) {
    return a.version == b.version && a.user == b.user && a.catalogue == b.catalogue &&
           a.locale == b.locale;
}

} // namespace

SessionPool::Loan::~Loan() {
    m_pool.giveBack(std::move(m_entry), m_isSpoilt);
}

SessionPool::SessionPool(std::shared_ptr<PluginProxy> plugin, std::size_t mostIdle)
    : m_plugin(std::move(plugin)), m_mostIdle(mostIdle) {}

SessionPool::~SessionPool() {
    m_idle.splice(m_idle.end(), m_unclosed);
    close(std::move(m_idle));
}

SessionPool::Loan SessionPool::take(Visit const& visit, SessionKind kind) {
    Entries taken;
    {
        std::lock_guard const lock(m_mutex);
        auto const found = std::find_if(m_idle.begin(), m_idle.end(), [&](Entry const& entry) {
            return entry.kind == kind && isSameCaller(entry.visit, visit);
        });
        if (found != m_idle.end()) {
            taken.splice(taken.begin(), m_idle, found);
        }
    }
    return {*this, taken.empty() ? open(visit, kind) : std::move(taken)};
}

SessionPool::Entries SessionPool::open(Visit const& visit, SessionKind kind) {
    Entries opened;
    opened.push_back({visit, kind, openSession(visit)});
    m_plugin->Notify(*opened.front().session, VexNotification::SessionOpened);
    return opened;
}

void SessionPool::giveBack(Entries entry, bool isSpoilt) {
    Entries closing;
    {
        std::lock_guard const lock(m_mutex);
        closing.splice(closing.end(), m_unclosed);
        (isSpoilt ? closing : m_idle).splice(isSpoilt ? closing.begin() : m_idle.begin(), entry);
        // What is left of models that were replaced would keep them loaded.
        for (auto at = m_idle.begin(); at != m_idle.end();) {
            auto const next = std::next(at);
            if (!at->visit.version->isNewest()) {
                closing.splice(closing.end(), m_idle, at);
            }
            at = next;
        }
        while (m_idle.size() > m_mostIdle) {
            closing.splice(closing.end(), m_idle, std::prev(m_idle.end()));
        }
    }
    close(std::move(closing));
}

// Called where nothing may be raised, and where memory may have ended.
void SessionPool::close(Entries closing) {
    Entries unclosed;
    for (auto at = closing.begin(); at != closing.end();) {
        auto const next = std::next(at);
        if (!tellClosed(*at->session)) {
            unclosed.splice(unclosed.end(), closing, at);
        }
        at = next;
    }
    std::lock_guard const lock(m_mutex);
    m_unclosed.splice(m_unclosed.end(), unclosed);
}

// False when there was no memory for it: what the plug-in keeps for the session
// would stay for good if it were not told once more.
bool SessionPool::tellClosed(HostSession& session) const {
    try {
        m_plugin->Notify(session, VexNotification::SessionClosed);
    } catch (PluginException const& broken) {
        if (broken.getFault() == PluginFault::OutOfMemory) {
            return false;
        }
        OutputDebugString(broken.what()); // nobody waits for this
    } catch (KRLException const& problem) {
        OutputDebugString(problem.what());
    } catch (std::bad_alloc const&) { // none for the message either
        return false;
    }
    return true;
}

std::size_t SessionPool::idleCount() const {
    std::lock_guard const lock(m_mutex);
    return m_idle.size();
}

} // namespace vex
