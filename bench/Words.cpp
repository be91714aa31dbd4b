#include "bench/Words.h"

namespace bench {

namespace {

constexpr Word areas[] = {
    {"Sales", "Vertrieb"},           {"Finance", "Finanzen"},     {"Logistics", "Logistik"},
    {"Human Resources", "Personal"}, {"Marketing", "Marketing"},  {"Production", "Fertigung"},
    {"Purchasing", "Einkauf"},       {"Service", "Kundendienst"}, {"Quality", "Qualität"},
};

constexpr Word folders[] = {
    {"Facts", "Fakten"},
    {"Dimensions", "Dimensionen"},
    {"Plan Figures", "Planzahlen"},
    {"Reference Data", "Stammdaten"},
};

constexpr Word owners[] = {
    {"Customer", "Kunden"},    {"Product", "Produkt"},      {"Store", "Filial"},
    {"Supplier", "Zuliefer"},  {"Employee", "Mitarbeiter"}, {"Region", "Gebiets"},
    {"Contract", "Vertrags"},  {"Project", "Projekt"},      {"Warehouse", "Lager"},
    {"Campaign", "Kampagnen"},
};

constexpr Word topics[] = {
    {"Orders", "aufträge"},       {"Invoices", "rechnungen"}, {"Payments", "zahlungen"},
    {"Shipments", "lieferungen"}, {"Returns", "rückgaben"},   {"Budgets", "budgets"},
    {"Forecasts", "prognosen"},   {"Master Data", "stamm"},   {"Targets", "ziele"},
    {"History", "verlauf"},
};

constexpr Word items[] = {
    {"Order Number", "Auftragsnummer"},
    {"Order Date", "Auftragsdatum"},
    {"Quantity", "Menge"},
    {"Unit Price", "Stückpreis"},
    {"Revenue", "Umsatz"},
    {"Gross Profit", "Rohertrag"},
    {"Discount", "Rabatt"},
    {"Currency Code", "Währung"},
    {"Ship Date", "Versanddatum"},
    {"Due Date", "Fälligkeitsdatum"},
    {"Customer Key", "Kundenschlüssel"},
    {"Product Key", "Produktschlüssel"},
    {"Store Key", "Filialschlüssel"},
    {"Region Name", "Gebietsname"},
    {"Country", "Land"},
    {"City", "Ort"},
    {"Postal Code", "Postleitzahl"},
    {"Street", "Straße"},
    {"Status", "Status"},
    {"Sales Channel", "Vertriebsweg"},
    {"Year", "Jahr"},
    {"Quarter", "Quartal"},
    {"Month", "Monat"},
    {"Week", "Woche"},
    {"Weekday", "Wochentag"},
    {"Created By", "Angelegt von"},
    {"Created At", "Angelegt am"},
    {"Changed By", "Geändert von"},
    {"Changed At", "Geändert am"},
    {"Comment", "Bemerkung"},
};

constexpr Word itemFolders[] = {
    {"Dates", "Datumsangaben"},
    {"Keys", "Schlüssel"},
    {"Addresses", "Anschriften"},
    {"Measures", "Kennzahlen"},
};

constexpr Word filters[] = {
    {"Open Only", "Nur offene"},
    {"This Year", "Dieses Jahr"},
    {"Without Returns", "Ohne Rückgaben"},
    {"Domestic", "Inland"},
};

constexpr Word calculations[] = {
    {"Margin", "Marge"},
    {"Average Price", "Durchschnittspreis"},
    {"Growth", "Wachstum"},
    {"Share of Total", "Anteil am Ganzen"},
};

} // namespace

std::span<Word const> const AreaWords = areas;
std::span<Word const> const FolderWords = folders;
std::span<Word const> const OwnerWords = owners;
std::span<Word const> const TopicWords = topics;
std::span<Word const> const ItemWords = items;
std::span<Word const> const ItemFolderWords = itemFolders;
std::span<Word const> const FilterWords = filters;
std::span<Word const> const CalculationWords = calculations;

} // namespace bench
