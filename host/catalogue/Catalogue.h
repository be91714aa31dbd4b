#pragma once

#include "I18NLocale.h"
#include "host/catalogue/Policy.h"
#include "host/catalogue/RowIndex.h"
#include "host/import/xml/FileText.h"
#include "host/store/build/Diagnostic.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// A text with one value for each locale; the nameless locale has the value
/// that holds for all others.
class LocalisedText {
public:
    /// False when the locale has a value already, which stays.
    bool add(I18NLocale locale, I18NString text);

    /// The value of the locale, else of its nearest parent, else the
    /// unlocalised one, else "". A value without text answers too.
    I18NString const& find(I18NLocale locale) const;

private:
    std::map<std::uint32_t, I18NString> m_values; // by the number of the locale
};

/// Who may use which view of a model.
struct CatalogueGrant {
    I18NString role;
    I18NString view;
    unsigned long line = 0;
    unsigned long column = 0;
    std::string file{}; // the policy that grants it; "" for the catalogue itself
};

/// The package that a model is published in. Its value is the property "value".
using CataloguePackage = std::map<I18NString, LocalisedText>;

struct CatalogueModel {
    I18NString path;
    std::string file; // beside the catalogue unless written with an absolute path
    CataloguePackage package;
    bool hasPackage = false;
    std::vector<CatalogueGrant> grants;
    RowIndex<CatalogueGrant, &CatalogueGrant::role> grantsOfRoles{}; // see `availableViews`
    unsigned long line = 0;
    unsigned long column = 0;
    std::string policyFile{};               // like `file`; "" without one
    std::shared_ptr<Policy const> policy{}; // its grants and users are in the catalogue's
};

struct CatalogueUser {
    I18NString name;
    std::vector<I18NString> roles{}; // in the catalogue's order
    unsigned long line = 0;
    unsigned long column = 0;
    std::string file{}; // the policy that names the user first; "" for the catalogue itself
};

/// What stands where, and who may use which views.
struct Catalogue {
    std::vector<CatalogueModel> models;
    std::vector<CatalogueUser> users;

    /// Null when there is none.
    CatalogueModel const* findModel(I18NString const& path) const;
    CatalogueUser const* findUser(I18NString const& name) const;

    RowIndex<CatalogueModel, &CatalogueModel::path> modelsByPath{};
    RowIndex<CatalogueUser, &CatalogueUser::name> usersByName{};
};

/// The views granted to any of the user's roles, each once, ascending.
std::vector<I18NString> availableViews(CatalogueModel const& model, CatalogueUser const& user);

/// Whether the policies that a catalogue names are read with it, and how long each may be.
struct PolicyFiles {
    bool areRead = true;
    InputLimit limit = PolicyLimits::bytes;
};

/// Reads a catalogue file, with the policies of its models. Appends every problem to `found`; null
/// when one of them is an error.
std::shared_ptr<Catalogue const> readCatalogue(std::string const& file, Diagnostics& found,
                                               InputLimit const& limit = catalogueLimit,
                                               PolicyFiles policies = {});

/// The same from text. `name` stands in diagnostics; model files and policies are taken
/// as relative to `folder`.
std::shared_ptr<Catalogue const> readCatalogueText(std::string_view text, std::string const& name,
                                                   std::string const& folder, Diagnostics& found,
                                                   PolicyFiles policies = {});

/// Gives models of a catalogue policies: their grants, their users and their roles are
/// added to those that are there.
class PolicyApplication {
public:
    /// The catalogue stays where it is, and has no other user meanwhile.
    explicit PolicyApplication(Catalogue& catalogue);

    void apply(CatalogueModel& governed, std::shared_ptr<Policy const> policy);

private:
    void addUsers(Policy const& policy);

    Catalogue& m_catalogue;
    std::map<I18NString, std::size_t> m_users; // by name
    std::set<Policy const*> m_applied;         // users are added once
};

/// @{
/// The same as the two above. Raises `KRLDocumentException` with the first error.
std::shared_ptr<Catalogue const> loadCatalogue(std::string const& file,
                                               InputLimit const& limit = catalogueLimit,
                                               PolicyFiles policies = {});
std::shared_ptr<Catalogue const> loadCatalogueText(std::string_view text, std::string const& name,
                                                   std::string const& folder);
/// @}

} // namespace vex
