#include "controls/frequencystore/memory/memorysystemfreqstorelistdefinition.h"

#include <QWidget>

bool MemorySystemFreqStoreListDefinition::PassValuePath(QWidget* widget) const {
    if (!widget || !GetAvailable4WideView())
        return false;
    widget->setProperty("valuePath", m_rootPath);
    return true;
}
