#include "core/features/panel_interface.h"

#include <cstdlib>

OSStatus MakePanelInterface(const PDEOperations& operations, PlugInIntf** interface) {
    auto* object = static_cast<PlugInIntf*>(std::calloc(1, sizeof(PlugInIntf)));
    if (object != nullptr) {
        object->table = static_cast<PDEInterfaceTable*>(std::calloc(1, sizeof(PDEInterfaceTable)));
        if (object->table != nullptr) {
            object->table->operations = operations;
        }
    }
    *interface = object;
    return noErr;
}
