#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/pixstatevector.h"

#include <gtest/gtest.h>

namespace {

PixStateVector* makeLine() {
    return new PixStateVectorOnNode;
}
FrequencyStoreListView* makeView(QWidget* parent, unsigned listId) {
    return new FrequencyNodeListView(parent, listId);
}
QString recycledByFunction;
void recycle(const QString& text) {
    recycledByFunction = text;
}

/// What the store tells of a list, in one line.
QString told(int listId) {
    IFrequencyListDefinition& list = *FreqStore::Instance().GetDefinition(listId);
    const std::unique_ptr<PixStateVector> line(list.CreatePixStateVector());
    const std::unique_ptr<FrequencyStoreListView> view(
        list.CreateView(nullptr, static_cast<unsigned>(listId)));
    EXPECT_TRUE(!view || view->GetID() == static_cast<unsigned>(listId));
    EXPECT_EQ(list.Available4FrequencyBar(), line != nullptr);
    EXPECT_EQ(list.GetFrequencyNodeMediatorCtrl(), nullptr);
    QString text = list.GetName() + QStringLiteral(" %1").arg(list.GetPixmap().width());
    if (list.GetAvailable4WideView())
        text += QLatin1String(" wide");
    if (list.GetAvailable4SimpleView())
        text += QLatin1String(" simple");
    if (line)
        text += QLatin1String(" line");
    if (view)
        text += QLatin1String(" view");
    return text + QStringLiteral(" %1").arg(list.GetCapabilityId4View());
}

TEST(Registration, ARecordAndPositionsTellTheSameAndWhatIsLeftOutHasDefaults) {
    FreqStore& store = FreqStore::Instance();
    const QPixmap icon(16, 16);
    PixStateVector* (*const noLine)() = nullptr;
    const struct {
        int id;
        QString told;
    } rows[] = {
        {store.RegisterList({}), " 0 wide simple 0"},
        {store.RegisterList({.name = "a", .available4WideView = false, .viewFactory = makeView}),
         "a 0 simple view 0"},
        {store.RegisterList({"b", icon, makeLine, false, false, nullptr, makeView, recycle, 7}),
         "b 16 line view 7"},
        {store.AddFrequencyListDefinition("c", icon, makeLine, true, false, nullptr, makeView, recycle, 7),
         "c 16 wide line view 7"},
        {store.AddFrequencyListDefinition("d", QPixmap(), nullptr, false, true, nullptr, nullptr, nullptr, 0),
         "d 0 simple 0"},
        {store.AddFrequencyListDefinition("e", QPixmap(), noLine, false, true, nullptr, 0, NULL, 0),
         "e 0 simple 0"},
        {store.AddFrequencyListDefinition(
             "f", QPixmap(), []() -> PixStateVector* { return makeLine(); }, true, true, nullptr,
             [](QWidget* parent, unsigned id) { return makeView(parent, id); }, [](const QString&) {}, 0),
         "f 0 wide simple line view 0"},
        {store.AddFrequencyListDefinition(
             new FrequencyListDefinition("g", icon, makeLine, true, true, nullptr, nullptr, recycle, 1)),
         "g 16 wide simple line 1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(told(row.id), row.told);
        store.RemoveFrequencyListDefinition(row.id);
    }
}

TEST(Registration, FunctionsHoldWhatTheyNeedUntilTheListGoes) {
    FreqStore& store = FreqStore::Instance();
    const auto held = std::make_shared<QStringList>();
    const int id = store.RegisterList({.name = "held",
                                       .viewFactory =
                                           [held](QWidget* parent, unsigned listId) {
                                               held->append(QString::number(listId));
                                               return makeView(parent, listId);
                                           },
                                       .recycle = [held](const QString& text) { held->append(text); }});
    told(id);
    store.GetDefinition(id)->RestoreFromRecycle("back");
    EXPECT_EQ(*held, (QStringList{QString::number(id), "back"}));
    store.RemoveFrequencyListDefinition(id);
    EXPECT_EQ(held.use_count(), 1);

    FrequencyListDefinition("r", QPixmap(), nullptr, true, true, nullptr, nullptr, recycle, 0)
        .RestoreFromRecycle("again");
    EXPECT_EQ(recycledByFunction, "again");
}

} // namespace
