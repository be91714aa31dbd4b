#pragma once

/// What an action tells its host when it comes back without raising.
class VexErrorCode {
public:
    /// The action is the plug-in's and is done.
    static constexpr long Handled = 1;
    /// The action is not the plug-in's: nothing was done or appended. A host asks the
    /// next plug-in, and tells its caller that the action is unknown when none is left.
    static constexpr long NotHandled = 6;

    /// `text` may be null; it is not copied and must outlive the code.
    VexErrorCode(long code, char const* text) : m_code(code), m_text(text) {}

    /// @{
    /// What the constructor was given.
    long GetCode() const { return m_code; }
    char const* GetText() const { return m_text; }
    /// @}

private:
    long m_code;
    char const* m_text;
};
