#pragma once

#include <functional>

/// The actions of the plug-in "RuleBreaker". Asked for metadata or
/// accessibility, it does the one whose number is the model path.
namespace ruleBreaker {

enum Action : long {
    Answer = 1,         // gives Handled; appends a long 7, the response node, an empty value
    ThrowInt = 2,       // an exception of a foreign kind
    ThrowStandard = 3,  // std::runtime_error "a standard one"
    ThrowBadAlloc = 4,  // std::bad_alloc
    ThrowPlatform = 5,  // KRLException "a plain one"
    Raise = 6,          // a VexException with the parameters "one" and "two"
    CallBack = 7,       // calls the std::function<void()> that in[0] points to
    ReadForEver = 8,    // lists the model root's children until something raises
    GrowForEver = 9,    // appends elements to the response until something raises
    AnswerNothing = 10, // gives Handled
    ThrowOwn = 11,      // an exception of a type of its own, with the text `ownText`
};

/// The text of an exception whose code goes with the plug-in.
constexpr char const* ownText = "a failure of a type of the plug-in's own";
/// What `Initialize` is given to say that it is not ready.
constexpr char const* notReady = "not ready";
/// What `Terminate` is given to throw.
constexpr char const* throwAtEnd = "throw";
/// The kind of notification that throws.
constexpr int throwingKind = 99;
/// What it traces when a session opens, and at any other notification.
constexpr char const* openedTrace = "a session was opened";
constexpr char const* otherTrace = "a session was closed or changed";

} // namespace ruleBreaker
