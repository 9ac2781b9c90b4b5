#include "host/gui/guibase.h"

GuiBase& GuiBase::Instance() {
    static auto* const instance = new GuiBase;
    return *instance;
}
