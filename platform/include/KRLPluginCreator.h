#pragma once

#include "KRLPluginFactory.h"

#include <new>
#include <string>
#include <utility>

/// Makes plug-in objects of one kind; registered with the factory by name.
template <class Interface> class KRLPluginCreatorBase {
public:
    using Hook = void (*)();

    explicit KRLPluginCreatorBase(std::string library)
        : m_library(std::move(library)), m_inLibrary(!m_library.empty()) {}
    KRLPluginCreatorBase(KRLPluginCreatorBase const&) = delete;
    KRLPluginCreatorBase& operator=(KRLPluginCreatorBase const&) = delete;
    virtual ~KRLPluginCreatorBase() = default; // does not unregister: the host forgets a library

    /// A new object, owned by the caller; null when memory is short.
    virtual Interface* create() const = 0;
    virtual void clean() = 0;

    void set_initialize(Hook hook) { m_initialize = hook; }
    void set_terminate(Hook hook) { m_terminate = hook; }

    std::string const& library() const { return m_library; }
    bool inLibrary() const { return m_inLibrary; }
    /// Run by the host before the first and after the last object; may be null.
    Hook initialize() const { return m_initialize; }
    Hook terminate() const { return m_terminate; }

private:
    std::string m_library;
    bool m_inLibrary;
    Hook m_initialize = nullptr;
    Hook m_terminate = nullptr;
};

template <class Key, class Interface, class Plugin>
class KRLPluginCreator final : public KRLPluginCreatorBase<Interface> {
public:
    using typename KRLPluginCreatorBase<Interface>::Hook;

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
