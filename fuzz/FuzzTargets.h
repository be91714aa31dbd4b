#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What each target does with an input. A broken property ends the program.
namespace fuzz {

/// Start paths: any text is split or refused, and names without "]" that were
/// put together as a reference come back from the split.
void startPath(std::string_view input);

/// Request documents: each is refused with a message or answered by the plug-in
/// on a fixed model, and the next request of another session is answered as ever.
void request(std::string_view input);

/// Model documents: each is loaded or refused where the error stands, never
/// both, and what was loaded can be asked for whole.
void model(std::string_view input);

/// Catalogues: likewise; what was read gives each user views in ascending order.
void catalogue(std::string_view input);

/// Images of models: numbers in a sound one are changed. Each is refused with a reason or
/// answers every question, and is written as a document.
void image(std::string_view input);

/// Policies: each is read or refused where the error stands; what was read makes views of
/// a fixed model, or is refused with the model, and every id that they list is one.
void policy(std::string_view input);

/// The bytes choose a model, views, a user and a session of requests: the
/// plug-in and the plain evaluator answer alike.
void sessionCase(std::string_view input);

/// Lines of a session: each gets one line of JSON, and the session goes on. One that is
/// confined to its model path calls the plug-in about no other.
void sessionLines(std::string_view input);

/// Tabular models: each is imported or refused with a reason, what is left out is told, and
/// what is written can be read and is the same the next time.
void tabular(std::string_view input);

/// Descriptions of OData services: likewise, with either form of navigation.
void odata(std::string_view input);

/// Ossie documents, YAML: likewise.
void ossie(std::string_view input);

/// Projects of cubes and views, YAML of one file: likewise.
void cube(std::string_view input);

/// @{
/// Translations: read or refused where they are wrong; applied to a fixed model each unit is
/// counted once, and what is applied again changes nothing.
void xliff(std::string_view input);
void csv(std::string_view input);
/// @}

/// Runs a target. Names of locales are kept as long as the process lives, so a run that is
/// long enough fills their room: an input that names one more counts as refused.
void run(void (*target)(std::string_view), std::string_view input);

/// Ends the program with a message when a property does not hold.
void require(bool holds, std::string const& property);

} // namespace fuzz
