// The text tables of this module's resources.
#pragma once

#include "Support/Version/CTextTable.h"

#include <map>
#include <string>

namespace NSSupport {

/// The tables of one kind.
class CResourceTables {
public:
    /// Reads all tables of the kind from the module's resources.
    explicit CResourceTables(const std::string& kind);

    /// The table of the resource `name` and ".txt". Null when there is none.
    const CTextTable* Find(const std::string& name) const;

private:
    std::map<std::string, CTextTable> fTables;
};

/// Each kind is read once, on first use by any thread, and lives to the end of the module.
const CResourceTables& GetStringTables();
const CResourceTables& GetAlertTables();
const CResourceTables& GetMenuTables();
const CResourceTables& GetHelpTables();

} // namespace NSSupport
