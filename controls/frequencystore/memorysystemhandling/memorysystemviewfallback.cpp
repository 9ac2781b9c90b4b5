#include "controls/frequencystore/memorysystemhandling/memorysystemhandler.h"

[[gnu::weak]] FrequencyStoreListView* CreateMemorySystemListView(QWidget*, unsigned) {
    return nullptr;
}
