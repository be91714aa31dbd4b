#pragma once

#include "host/content/CachedImages.h"
#include "host/store/image/Model.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace vex {

/// Writes images of models into a cache, one after the other, beside what else the process
/// does. Nothing that goes wrong there raises. Threads: one.
class ImageQueue {
public:
    ImageQueue(std::string folder, std::uint64_t mostBytes)
        : m_folder(std::move(folder)), m_mostBytes(mostBytes) {}
    ImageQueue(ImageQueue const&) = delete;
    ImageQueue& operator=(ImageQueue const&) = delete;
    /// Waits as `finish` does.
    ~ImageQueue() { finish(); }

    /// In the place of one of the same document that still waits.
    void write(std::shared_ptr<Model const> model, ImageName name, std::string documentPath);

    /// Waits until everything is written; gives what could not be: the documents, and why.
    std::map<std::string, std::string> finish();

private:
    struct Job {
        std::shared_ptr<Model const> model;
        ImageName name;
    };

    void work();
    void writeAll();
    void place(Job const& job, std::string const& documentPath) const;

    std::string const m_folder;
    std::uint64_t const m_mostBytes;
    std::thread m_thread;
    std::mutex m_mutex;                // of what follows
    std::map<std::string, Job> m_jobs; // by document
    bool m_isWorking = false;
    std::map<std::string, std::string> m_problems; // the last of each document
};

} // namespace vex
