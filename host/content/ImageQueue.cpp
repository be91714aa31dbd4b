#include "host/content/ImageQueue.h"

#include "KRLException.h"
#include "host/store/image/ImageFile.h"

#include <csignal>
#include <exception>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include <pthread.h>

namespace vex {

namespace {

/// While it lives, what this thread starts takes no signals: they are for who waits for them.
class SignalsElsewhere {
public:
    SignalsElsewhere() {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_BLOCK, &all, &m_before);
    }
    SignalsElsewhere(SignalsElsewhere const&) = delete;
    SignalsElsewhere& operator=(SignalsElsewhere const&) = delete;
    ~SignalsElsewhere() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before{};
};

} // namespace

void ImageQueue::write(std::shared_ptr<Model const> model, ImageName name,
                       std::string documentPath) {
    std::lock_guard const guard(m_mutex);
    m_jobs.insert_or_assign(std::move(documentPath), Job{std::move(model), std::move(name)});
    if (m_isWorking) {
        return;
    }
    if (m_thread.joinable()) {
        m_thread.join(); // it has nothing more to do
    }
    try {
        SignalsElsewhere const elsewhere;
        m_thread = std::thread([this] { work(); });
        m_isWorking = true;
    } catch (std::system_error const& problem) {
        for (auto const& [document, job] : m_jobs) {
            m_problems.insert_or_assign(document, problem.what());
        }
        m_jobs.clear();
    }
}

std::map<std::string, std::string> ImageQueue::finish() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
    return std::exchange(m_problems, {});
}

void ImageQueue::work() {
    try {
        writeAll();
    } catch (std::bad_alloc const&) {
        std::lock_guard const guard(m_mutex);
        m_jobs.clear();
        m_isWorking = false;
    }
}

void ImageQueue::writeAll() {
    std::unique_lock lock(m_mutex);
    while (!m_jobs.empty()) {
        auto const next = m_jobs.extract(m_jobs.begin());
        lock.unlock();
        std::string problem;
        try {
            place(next.mapped(), next.key());
        } catch (KRLDocumentException const& failure) { // its file is no name that people know
            problem = failure.GetProblem();
        } catch (std::bad_alloc const&) {
            throw;
        } catch (std::exception const& failure) {
            problem = failure.what();
        }
        lock.lock();
        m_problems.erase(next.key());
        if (!problem.empty()) {
            m_problems.emplace(next.key(), std::move(problem));
        }
    }
    m_isWorking = false;
}

void ImageQueue::place(Job const& job, std::string const& documentPath) const {
    std::uint64_t const likely = job.model->byteCount();
    if (likely > m_mostBytes) {
        throw KRLException("its image is larger than the cache may grow, so it is not kept");
    }
    std::string problem;
    std::optional<CacheFolder> folder = CacheFolder::make(m_folder, problem);
    if (!folder) {
        throw KRLException(problem);
    }
    if (!folder->lock()) {
        throw KRLException("another run is writing to the cache, so no image is kept yet");
    }
    if (folder->has(job.name.text())) {
        return; // that run wrote the same
    }
    boundImages(*folder, m_mostBytes - likely);
    writeImage(*job.model, folder->pathTo(UnfinishedImageName));
    if (!placeImage(*folder, UnfinishedImageName, job.name, documentPath)) {
        throw KRLException("its image cannot be put into the cache");
    }
    boundImages(*folder, m_mostBytes);
}

} // namespace vex
