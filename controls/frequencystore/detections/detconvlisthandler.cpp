#include "controls/frequencystore/detections/detconvlisthandler.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevectorsearchmc.h"

#include <QPixmap>

namespace {

// One letter stands for two colours, and one that is used stands for none: the picture is known that way.
const char* const ListIcon[] = {
    "14 14 5 1",      ". c none",       "b c #080",       "# c #008",       "a c #fff",
    "b c #000",       "..............", "....#xaax#....", "..####xx####..", "..##########..",
    ".###xx#######.", ".##xbx#####x#.", ".xxbbx####xx#.", ".bbbbbxxxxbx#.", ".bbbbx#xbbbx#.",
    ".bbbx###xbbx#.", "..bbx###xxx#..", "..bbx##x####..", "....x#xax#....", "..............",
};

template <typename Record>
PixStateVector* createLine() {
    auto* line = new PixStateVectorSearchMC<Record>(0);
    line->Init(DetConvListHandler::Instance()->getEmissionListPath());
    line->SetMarkedPath(DetConvListHandler::Instance()->getEmissionMarkedPath());
    line->SetMode(1);
    return line;
}

} // namespace

PixStateVector* CreateSearchMCPixStateVector() {
    return createLine<DetectionConventional>();
}

DetConvListHandler* DetConvListHandler::m_pInstance = nullptr;

DetConvListHandler* DetConvListHandler::Instance() {
    if (!m_pInstance)
        m_pInstance = new DetConvListHandler;
    return m_pInstance;
}

void DetConvListHandler::DeleteInstance() {
    delete std::exchange(m_pInstance, nullptr);
}

int DetConvListHandler::AddToFreqStore(bool vuhf, const QString& name) {
    m_listId = -1;
    const QPixmap icon(ListIcon);
    const ViewFactory extendedView =
        vuhf ? CreateSearchMCExtendedVectorListViewVUHF : CreateSearchMCExtendedVectorListViewHF;
    m_listId = FreqStore::Instance().AddFrequencyListDefinition(
        m_extended ? tr("Search MC with Classifier") : name, icon,
        m_extended ? createLine<ExtendedDetectionConventional> : CreateSearchMCPixStateVector, false, true,
        nullptr, m_extended ? extendedView : CreateSearchMCVectorListView, nullptr, 0);
    return m_listId;
}
