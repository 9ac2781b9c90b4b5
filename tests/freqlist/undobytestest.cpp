// What undo keeps as bytes, in memory or in a file.

#include "host/freqlist/undorecords.h"
#include "host/valuetree/operatoraction.h"

#include <QUndoStack>

#include <gtest/gtest.h>

TEST(UndoRecordsTest, GoToAFileWhenTheyTakeMuchAndComeBack) {
    UndoHistory::Instance().SetOn(true);
    constexpr unsigned Count = 100'000;
    ValueList<ExtendedDetectionConventional> list;
    std::list<ExtendedDetectionConventional> records;
    for (unsigned id = 0; id < Count; ++id) {
        ExtendedDetectionConventional& record = records.emplace_back();
        record.SetID(id);
        record.SetFrequency(id * 10.0);
        record.Result().decoder = "decoder " + std::to_string(id);
        record.Result().confidence = static_cast<short>(id % 100);
    }
    list.Append(std::move(records));
    const std::list<ExtendedDetectionConventional> before = list.Elements();
    {
        const OperatorAction action(QStringLiteral("Clear"));
        UndoRecords<ExtendedDetectionConventional>::Clear(1, list);
    }
    QUndoStack& stack = UndoHistory::Instance().Stack();
    EXPECT_LT(UndoHistory::Instance().InMemory(), UndoBytes::MostInMemory);
    for (int round = 0; round < 2; ++round) {
        stack.undo();
        EXPECT_TRUE(list.Elements() == before) << round;
        stack.redo();
        EXPECT_EQ(list.Size(), 0u) << round;
    }
    EXPECT_TRUE(stack.undoText().contains(QString::number(Count))) << stack.undoText().toStdString();
    UndoHistory::Instance().SetOn(false);
}

TEST(UndoBytesTest, GoToAFileAndBack) {
    UndoBytes bytes;
    constexpr size_t Count = UndoBytes::MostInMemory / sizeof(quint64) * 2 + 12345;
    for (quint64 i = 0; i < Count; ++i)
        bytes.Put(i * 7);
    EXPECT_LT(bytes.InMemory(), 2 * UndoBytes::MostInMemory);
    bytes.Spill();
    EXPECT_EQ(bytes.InMemory(), 0u);
    bytes.Put(quint64(1)); // some behind the file
    UndoBytes::Reader reader(bytes);
    quint64 wrong = 0;
    for (quint64 i = 0; i < Count; ++i)
        wrong += reader.Get<quint64>() == i * 7 ? 0 : 1;
    EXPECT_EQ(wrong, 0u);
    EXPECT_EQ(reader.Get<quint64>(), 1u);
    EXPECT_TRUE(reader.AtEnd());
    bytes.Load();
    EXPECT_EQ(bytes.Size(), (Count + 1) * sizeof(quint64));
    UndoBytes::Reader again(bytes);
    EXPECT_EQ(again.Get<quint64>(), 0u);
    EXPECT_EQ(again.Get<quint64>(), 7u);
}
