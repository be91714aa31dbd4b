#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// A name that an expression of a tabular model says, in the letters that compare.
struct ExpressionName {
    enum class Kind {
        Table,    // Sales, 'Sales'
        Member,   // [Amount]: a measure, or a column of any table
        OfTable,  // Sales[Amount]: a column of that table, or a measure
        Function, // Taxed(
    };
    Kind kind;
    std::u16string table{}; // of `OfTable`
    std::u16string name;
};

/// What an expression names. Rather too much than too little: what a comment or a literal says
/// in brackets or quotes counts too, since who sees the expression reads it there.
std::vector<ExpressionName> namesInExpression(std::string_view expression);

} // namespace vex
