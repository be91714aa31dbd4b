#pragma once

#include "host/store/build/ModelWriter.h"
#include "host/store/image/Model.h"

#include <string>

/// A model in the making, from a source that is a list of tables.
class WrittenModel final : vex::ModelSource {
public:
    explicit WrittenModel(vex::ModelWriterOptions const& options = {})
        : m_report(m_file, *this, m_found), m_writer(m_report, options) {
        m_writer.openObject(u"model");
    }

    vex::ModelWriter& writer() { return m_writer; }
    vex::SourceReport& report() { return m_report; }

    /// Where the source stands from now on.
    void moveTo(vex::SourcePosition at) { m_at = std::move(at); }
    /// How often it was asked for that.
    int timesAsked() const { return m_timesAsked; }

    /// Closes the model.
    std::shared_ptr<vex::Model const> finish() {
        m_writer.closeObject();
        return std::move(m_writer).finish();
    }

    vex::Diagnostics const& found() const { return m_found; }
    /// What was found, one line each.
    std::string foundText() const {
        std::string text;
        for (vex::Diagnostic const& diagnostic : m_found) {
            text += (text.empty() ? "" : "\n") + diagnostic.rule + ": " + toString(diagnostic);
        }
        return text;
    }

private:
    vex::SourcePosition position() const override {
        ++m_timesAsked;
        return m_at;
    }

    std::string m_file = "shop";
    vex::SourcePosition m_at;
    mutable int m_timesAsked = 0;
    vex::Diagnostics m_found;
    vex::SourceReport m_report;
    vex::ModelWriter m_writer;
};
