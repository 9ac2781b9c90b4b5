#pragma once

#include "host/base/coord.h"
#include "host/valuetree/valueselection.h"

/// Settings of the operator that other parts of the GUI observe as values. They live as long as the process
/// and are not in the tree.
class GuiCentral {
public:
    static GuiCentral& Instance();

    /// How positions are written. Index and key of the chosen item are the number of a `CoordFormat`. Owned
    /// by this object; observers learn of another choice.
    ValueSelection* GetPositionFormat() { return &m_positionFormat; }
    CoordFormat CurrentPositionFormat() const {
        return static_cast<CoordFormat>(m_positionFormat.GetCurrentIndex());
    }

private:
    GuiCentral();

    ValueSelection m_positionFormat;
};
