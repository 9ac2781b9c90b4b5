#include "controls/frequencystore/detections/detconvlisthandler.h"

#include "controls/frequencystore/detections/detectionlistviewfactory.h"
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

} // namespace

template <typename Record>
PixStateVector* MakeDetectionLine(const DetectionPaths& paths) {
    auto* line = new PixStateVectorSearchMC<Record>(0);
    line->Init(paths.emissions);
    line->SetMarkedPath(paths.marked);
    line->SetMode(1);
    return line;
}

template PixStateVector* MakeDetectionLine<DetectionConventional>(const DetectionPaths& paths);
template PixStateVector* MakeDetectionLine<ExtendedDetectionConventional>(const DetectionPaths& paths);

PixStateVector* CreateSearchMCPixStateVector() {
    return MakeDetectionLine<DetectionConventional>(DetConvListHandler::Instance()->GetPaths());
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

std::shared_ptr<const DetectionPaths> DetConvListHandler::pathsOfNewList() {
    const DetectionPaths present = *m_paths;
    *m_paths = std::exchange(m_registeredPaths, present); // those of the list before
    m_paths = std::make_shared<DetectionPaths>(present);
    return m_paths;
}

int DetConvListHandler::AddToFreqStore(bool vuhf, const QString& name) {
    m_listId = -1;
    const auto makeExtendedView = vuhf ? MakeExtendedDetectionViewVUHF : MakeExtendedDetectionViewHF;
    const auto makeView = m_extended ? makeExtendedView : MakeDetectionView;
    const auto makeLine = m_extended ? MakeDetectionLine<ExtendedDetectionConventional>
                                     : MakeDetectionLine<DetectionConventional>;
    const std::shared_ptr<const DetectionPaths> paths = pathsOfNewList();
    m_listId = FreqStore::Instance().RegisterList(
        {.name = m_extended ? tr("Search MC with Classifier") : name,
         .icon = QPixmap(ListIcon),
         .pixStateFactory = [makeLine, paths] { return makeLine(*paths); },
         .available4WideView = false,
         .viewFactory = [makeView, paths](QWidget* parent,
                                          unsigned id) { return makeView(parent, id, *paths, {}); }});
    return m_listId;
}
