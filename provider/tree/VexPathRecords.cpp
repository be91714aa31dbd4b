#include "provider/tree/VexPathRecords.h"

#include "model/VexClassNames.h"
#include "provider/VexConstants.h"

VexRecordRole RecordRoleOf(I18NString const& className) {
    struct Row {
        char const* className;
        VexRecordRole role;
    };
    constexpr Row rows[] = {
        {VexClass::QueryItem, VexRecordRole::Named},
        {VexClass::QuerySubject, VexRecordRole::Named},
        {VexClass::Filter, VexRecordRole::Named},
        {VexClass::Calculation, VexRecordRole::Named},
        {VexClass::Namespace, VexRecordRole::Outermost},
        {VexClass::Shortcut, VexRecordRole::Shortcut},
    };
    for (Row const& row : rows) {
        if (className == row.className) {
            return row.role;
        }
    }
    return VexRecordRole::Other;
}

bool NeedsModelSearch(VexPathRecord const* records) {
    for (VexPathRecord const* record = records; record != nullptr; record = record->outer) {
        switch (RecordRoleOf(*record->className)) {
        case VexRecordRole::Shortcut:
            return true;
        case VexRecordRole::Outermost:
            return false; // records further out never count
        case VexRecordRole::Named:
        case VexRecordRole::Other:
            break;
        }
    }
    return false;
}
