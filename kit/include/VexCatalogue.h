#pragma once

#include "I18NString.h"
#include "VexHostExport.h"
#include "VexSession.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VexModel;

/// A catalogue: what stands where, and who may use which security views.
/// It does not change. Threads: any.
class VEX_HOST_API VexCatalogue {
public:
    /// Reads a catalogue file. Raises `KRLDocumentException`, with line and column, for
    /// the first error in it, and when it cannot be read or is longer than 64 mebibytes.
    /// The policies that it names are read with it, the models are not.
    static std::shared_ptr<VexCatalogue const> readFile(std::string const& file);
    /// The same from text; `name` stands for the file in messages, and files of models
    /// are sought in `folder`.
    static std::shared_ptr<VexCatalogue const>
    readText(std::string_view xml, std::string const& name, std::string const& folder);

    VexCatalogue(VexCatalogue const&) = delete;
    VexCatalogue& operator=(VexCatalogue const&) = delete;
    ~VexCatalogue();

    /// @{
    /// The paths of its models, and the names of its users, in its order.
    std::vector<I18NString> modelPaths() const;
    std::vector<I18NString> userNames() const;
    /// @}

    /// The file of the model at that path. Raises `KRLException` for an unknown path. Views that
    /// a policy of the catalogue makes by rules are not in it: see `readModel`.
    std::string const& modelFile(I18NString const& modelPath) const;

    /// Reads the model at that path, with the views that its policy makes, if it has one.
    /// Raises `KRLException` for an unknown path, else what `VexModel::readFile` does.
    std::shared_ptr<VexModel const> readModel(I18NString const& modelPath) const;

private:
    friend class VexCatalogueSecurity;
    struct State;
    explicit VexCatalogue(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

/// What a catalogue grants one user: the model service of the user's sessions. A path
/// that the catalogue lacks has no security information. Threads: one at a time, as for
/// the session.
class VEX_HOST_API VexCatalogueSecurity final : public VexModelService {
public:
    /// Shares the catalogue. Raises `KRLException` for a user that it lacks, and without
    /// a catalogue.
    VexCatalogueSecurity(std::shared_ptr<VexCatalogue const> catalogue, I18NString const& user);
    VexCatalogueSecurity(VexCatalogueSecurity const&) = delete;
    VexCatalogueSecurity& operator=(VexCatalogueSecurity const&) = delete;
    ~VexCatalogueSecurity() override;

    /// What is handed out lives as long as this object.
    VexSecurityInfoSource* GetSecurityInfoSource(I18NString const& modelPath) override;

private:
    struct State;
    std::unique_ptr<State> m_state;
};
