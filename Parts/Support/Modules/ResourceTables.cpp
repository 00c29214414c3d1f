#include "Support/Modules/ResourceTables.h"

#include "Support/Modules/ModuleResources.h"

namespace NSSupport {

CResourceTables::CResourceTables(const std::string& kind) {
    for (const std::string& name : ListModuleResources(kind)) {
        if (const auto media = OpenModuleResource(kind, name)) {
            fTables.emplace(name, CTextTable(*media));
        }
    }
}

const CTextTable* CResourceTables::Find(const std::string& name) const {
    const auto found = fTables.find(name + ".txt");
    return found == fTables.end() ? nullptr : &found->second;
}

const CResourceTables& GetStringTables() {
    static const CResourceTables tables(kResourceKind_Strings);
    return tables;
}

const CResourceTables& GetAlertTables() {
    static const CResourceTables tables(kResourceKind_Alerts);
    return tables;
}

const CResourceTables& GetMenuTables() {
    static const CResourceTables tables(kResourceKind_Menus);
    return tables;
}

const CResourceTables& GetHelpTables() {
    static const CResourceTables tables(kResourceKind_Help);
    return tables;
}

} // namespace NSSupport
