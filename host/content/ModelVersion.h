#pragma once

#include "host/catalogue/PolicyTrace.h"
#include "host/store/image/Model.h"

#include <atomic>
#include <memory>
#include <string>

namespace vex {

/// A model as it was read at one time. Threads: any.
class ModelVersion {
public:
    ModelVersion(I18NString path, std::string stamp, std::shared_ptr<Model const> model,
                 std::shared_ptr<PolicyTrace const> policyTrace = nullptr)
        : m_path(std::move(path)), m_stamp(std::move(stamp)), m_model(std::move(model)),
          m_policyTrace(std::move(policyTrace)) {}
    ModelVersion(ModelVersion const&) = delete;
    ModelVersion& operator=(ModelVersion const&) = delete;

    /// Where the model stands, for who asks for it.
    I18NString const& path() const { return m_path; }
    /// Tells this version from the others of its path.
    std::string const& stamp() const { return m_stamp; }
    std::shared_ptr<Model const> const& model() const { return m_model; }

    /// What the rules of its policy meant; null without a policy, or when it was not kept.
    std::shared_ptr<PolicyTrace const> const& policyTrace() const { return m_policyTrace; }

    /// False once its store has a newer one.
    bool isNewest() const { return !m_replaced.load(std::memory_order_acquire); }
    /// The store's alone to call.
    void markReplaced() { m_replaced.store(true, std::memory_order_release); }

private:
    I18NString m_path;
    std::string m_stamp;
    std::shared_ptr<Model const> m_model;
    std::shared_ptr<PolicyTrace const> m_policyTrace;
    std::atomic<bool> m_replaced{false};
};

} // namespace vex
