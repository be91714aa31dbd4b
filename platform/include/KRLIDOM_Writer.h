#pragma once

#include "KRLIDOM_Node.h"

#include <iosfwd>
#include <string>

/// Writes a node and all below it as XML text in UTF-8, without XML
/// declaration. Names and namespace declarations are written as they stand in the
/// document; a document may be of any depth.
class VEX_PLATFORM_API KRLIDOM_Writer {
public:
    /// `pretty` breaks lines and indents, and ends the last line. The stream's
    /// own state tells whether writing failed; it gets blocks of some 32 KB. Raises:
    /// `KRLDocumentException` for text that XML cannot hold and for nodes of a document
    /// type, `KRLLimitException` without memory; what was written before stays written.
    /// Threads: one document on one thread at a time.
    static void write(std::ostream& out, KRLIDOM_Node const& node, bool pretty);
    /// Raises what `write` raises for the node, and writes nothing: who checks first leaves no
    /// half of a document behind.
    static void check(KRLIDOM_Node const& node);
    /// The same as `write`, as a string. Raises the same.
    static std::string toUtf8(KRLIDOM_Node const& node, bool pretty = false);
};
