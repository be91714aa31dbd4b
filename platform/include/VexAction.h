#pragma once

/// The actions that the metadata access plug-in serves, by number. The numbers
/// are part of the contract with hosts.
namespace VexAction {

/// The numbers.
enum Code : long {
    MetadataRequest = 31000,      ///< answers a request document with a tree
    AccessibilityRequest = 32000, ///< tells whether one object is accessible
};

} // namespace VexAction
