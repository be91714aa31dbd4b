#pragma once

#include "KRLPluginFactory.h"

#include <new>
#include <string>
#include <utility>

/// Makes plug-in objects of one kind; registered with the factory by name. Threads: one
/// at a time.
template <class Interface> class KRLPluginCreatorBase {
public:
    /// What a host runs before the first object and after the last.
    using Hook = void (*)();

    /// `library` is the name of the library that makes the creator; "" outside of one.
    explicit KRLPluginCreatorBase(std::string library)
        : m_library(std::move(library)), m_inLibrary(!m_library.empty()) {}
    KRLPluginCreatorBase(KRLPluginCreatorBase const&) = delete;
    KRLPluginCreatorBase& operator=(KRLPluginCreatorBase const&) = delete;
    virtual ~KRLPluginCreatorBase() = default; // does not unregister: the host forgets a library

    /// A new object, owned by the caller; null when memory is short. Raises what the
    /// plug-in's constructor raises.
    virtual Interface* create() const = 0;
    /// For creators that keep something between objects.
    virtual void clean() = 0;

    /// @{
    /// Sets what the host is to run; null for nothing.
    void set_initialize(Hook hook) { m_initialize = hook; }
    void set_terminate(Hook hook) { m_terminate = hook; }
    /// @}

    /// @{
    /// The library that the creator comes from, and whether there is one.
    std::string const& library() const { return m_library; }
    bool inLibrary() const { return m_inLibrary; }
    /// @}
    /// @{
    /// Run by the host before the first and after the last object; may be null.
    Hook initialize() const { return m_initialize; }
    Hook terminate() const { return m_terminate; }
    /// @}

private:
    std::string m_library;
    bool m_inLibrary;
    Hook m_initialize = nullptr;
    Hook m_terminate = nullptr;
};

/// The creator of the class `Plugin`: a static object of the plug-in library, which
/// registers itself while the library is loaded.
template <class Key, class Interface, class Plugin>
class KRLPluginCreator final : public KRLPluginCreatorBase<Interface> {
public:
    using typename KRLPluginCreatorBase<Interface>::Hook;

    /// Registers itself under `name`, for the library that is being loaded.
    KRLPluginCreator(Key name, Hook whenFirst, Hook whenLast)
        : KRLPluginCreatorBase<Interface>(KRLPluginFactory<Key, Interface>::getCurrentLibrary()),
          m_name(std::move(name)) {
        KRLPluginFactory<Key, Interface>::registerCreator(m_name, this);
        this->set_initialize(whenFirst);
        this->set_terminate(whenLast);
    }

    Interface* create() const override { return new (std::nothrow) Plugin; }
    void clean() override {}

private:
    Key m_name;
};
