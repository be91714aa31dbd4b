#pragma once

/// A model whose view "v" includes the namespace "n" and the filter "x", and
/// leaves out the filter "y".
inline constexpr char const* plainModel = R"(
    <model id="m" defaultLocale="en">
      <namespace id="n" name="Sales"><filter id="x" name="X"/><filter id="y" name="Y"/></namespace>
      <securityViews>
        <securityView id="v"><set kind="included"><item>n</item><item>x</item></set></securityView>
      </securityViews>
    </model>)";
