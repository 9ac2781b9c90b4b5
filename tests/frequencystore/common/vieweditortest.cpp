#include "controls/frequencystore/common/halvovieweditor.h"
#include "controls/frequencystore/memory/memorymediatorhf.h"
#include "host/widgets/canclosetabdialog.h"
#include "host/widgets/vcfrequencylist.h"
#include "host/widgets/vclineedit.h"
#include "tests/frequencystore/memory/memorychannels.h"
#include "tests/support/waiting.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

/// An editor in its dialog, as the views open it.
class ViewEditor : public MemoryChannels {
protected:
    void Open(MediatorType type) {
        Start(type);
        m_dialog = std::make_unique<CanCloseTabDialog>(nullptr, nullptr, true,
                                                       Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
        m_editor = new HalvoViewEditor(m_dialog.get(), Q("Editor"), type);
        m_dialog->addTab(m_editor, Q("Edit"));
        QObject::connect(m_dialog.get(), &TabDialog::applyButtonPressed, m_editor,
                         &HalvoViewEditor::slotAcceptChanges);
    }
    void Show() {
        m_dialog->show();
        m_dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get(), Patience));
    }
    void TearDown() override {
        m_dialog.reset();
        EXPECT_EQ(Copies(), 0u) << "an editor leaves no copy behind";
        MemoryChannels::TearDown();
    }
    template <typename W = QWidget>
    W* Field(const char* key) {
        return m_editor->findChild<W*>(Q(key));
    }
    QString Note(const char* key) { return Field<QLabel>((std::string("note-") + key).c_str())->text(); }
    void Type(const char* key, const char* text) {
        auto* field = Field(key);
        ASSERT_NE(field, nullptr) << key;
        field->setFocus();
        QTest::keySequence(field, QKeySequence::SelectAll);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, Q(text));
    }
    void Choose(const char* key, int index) {
        auto* box = Field<QComboBox>(key);
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    void Press(QDialogButtonBox::StandardButton button) {
        m_dialog->findChild<QDialogButtonBox*>()->button(button)->click();
    }
    static QString Text(Node* node, const char* key) { return node->GetValue(Q(key))->GetStringValue(); }
    static QStringList Texts(Node* node) {
        QStringList texts;
        for (const ValueBase* value = node->FirstValue(); value; value = Node::NextValue(value))
            texts << value->GetName() + Q("=") + value->GetStringValue();
        return texts;
    }
    static size_t Copies() {
        const Node* copies = Tree::Instance()->GetNode(Q("/TempEditMscanList"));
        return copies ? copies->ChildCount() : 0;
    }

    std::unique_ptr<CanCloseTabDialog> m_dialog;
    HalvoViewEditor* m_editor = nullptr;
};

TEST_F(ViewEditor, FieldsFollowTheKindOfList) {
    const std::pair<MediatorType, QStringList> kinds[] = {
        {MediatorType::MemoryHF,
         {Q("frequency"), Q("rangefrequencies"), Q("bandwidthsel"), Q("comment"), Q("demodulation"),
          Q("threshold"), Q("bfofrequency"), Q("outputifpath"), Q("shift")}},
        {MediatorType::MemoryVUHF,
         {Q("frequency"), Q("rangefrequencies"), Q("bandwidthsel"), Q("comment"), Q("demodulation"),
          Q("threshold"), Q("usesquelch"), Q("useattenuation"), Q("attenuation"), Q("afc"), Q("antennaid")}},
        {MediatorType::NoiFrequencies, {Q("frequency"), Q("bandwidth"), Q("comment")}}};
    for (const auto& [type, expected] : kinds) {
        Open(type);
        Node* node = AddChannel(7055000, "calling");
        if (type == MediatorType::NoiFrequencies) {
            node->DeleteValue(Q("bandwidthsel"));
            Own<ValueNumeric<double>>(node, "bandwidth").SetValue(5);
        }
        m_editor->DoWorkOn(Mediator(0));
        QStringList fields;
        for (const QLabel* note : m_editor->findChildren<QLabel*>(QRegularExpression(Q("^note-"))))
            fields << note->objectName().mid(5);
        EXPECT_EQ(fields, expected);
        for (const QString& key : expected) {
            const auto* field = m_editor->findChild<QWidget*>(key);
            ASSERT_NE(field, nullptr) << key.toStdString();
            EXPECT_TRUE(field->isEnabled());
        }
        m_editor->DoWorkOn(nullptr);
        EXPECT_EQ(Copies(), 0u);
        EXPECT_FALSE(m_editor->slotAcceptChanges()) << "there is nothing to write";
        ViewEditor::TearDown();
    }
}

TEST_F(ViewEditor, ChangesReachTheChannelOnlyWhenAccepted) {
    Open(MediatorType::MemoryHF);
    Node* node = AddChannel(7055000, "calling");
    m_editor->DoWorkOn(Mediator(0));
    Show();
    const QStringList before = Texts(node);
    EXPECT_EQ(Field<QLineEdit>("frequency")->text(), Q("7055.000 kHz"));
    EXPECT_EQ(Note("frequency"), Q("9.000 kHz to 3000.000000 MHz"));
    EXPECT_EQ(Note("threshold"), Q("-40 to 110 dBµV"));
    EXPECT_EQ(Note("shift"), Q("26 to 39974 Hz"));
    Type("frequency", "7.06 MHz");
    Type("bandwidthsel", "2.4");
    Type("comment", "Ä \"net\"");
    Type("threshold", "-7");
    Choose("demodulation", 1);
    Choose("outputifpath", 1);
    EXPECT_EQ(Texts(node), before);
    EXPECT_EQ(Copies(), 1u);
    Own<ValueNumeric<int>>(node, "bfofrequency").SetValue(-5); // by somebody else meanwhile
    Press(QDialogButtonBox::Ok);
    EXPECT_FALSE(m_dialog->isVisible());
    const std::pair<const char*, const char*> expected[] = {
        {"frequency", "7060000"}, {"bandwidthsel", "2400"}, {"comment", "Ä \"net\""},
        {"threshold", "-7"},      {"demodulation", "USB"},  {"outputifpath", "455.0 kHz"},
        {"shift", "20000"},       {"bfofrequency", "-5"},   {"range", "false"},
        {"rangefrequencies", ""}, {"rangecounter", "-1"}};
    for (const auto& [key, text] : expected)
        EXPECT_EQ(Text(node, key), Q(text)) << key;
}

TEST_F(ViewEditor, CancelLeavesTheChannelAsItWas) {
    Open(MediatorType::MemoryVUHF);
    Node* node = AddChannel(145.5e6, "relay");
    m_editor->DoWorkOn(Mediator(0));
    Show();
    const QStringList before = Texts(node);
    Type("comment", "other");
    Field<QCheckBox>("afc")->click();
    Press(QDialogButtonBox::Cancel);
    EXPECT_EQ(Texts(node), before);
    m_dialog->show();
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(Text(node, "afc"), Q("true"));
    EXPECT_EQ(Text(node, "comment"), Q("other"));
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(ViewEditor, AWrongEntrySaysSoBesideTheFieldAndNothingIsWritten) {
    Open(MediatorType::MemoryVUHF);
    Node* node = AddChannel(145.5e6, "relay");
    m_editor->DoWorkOn(Mediator(0));
    Show();
    const QStringList before = Texts(node);
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"frequency", "5 GHz", "5000.000000 MHz is outside 9.000 kHz to 3000.000000 MHz"},
        {"frequency", "", "\"\" is not a frequency"},
        {"bandwidthsel", "x", "\"x\" is not a bandwidth"},
        {"threshold", "111", "111 is outside -40 to 110"},
        {"attenuation", "1.5", "\"1.5\" is not a whole number"},
        {"rangefrequencies", "146; 5 GHz",
         "Line 1: 5000.000000 MHz is outside 9.000 kHz to 3000.000000 MHz"}};
    for (const auto& [key, entry, problem] : rows) {
        Type("comment", "changed");
        const QString note = Note(key);
        Type(key, entry);
        EXPECT_EQ(Note(key), Q(problem));
        Press(QDialogButtonBox::Ok);
        EXPECT_TRUE(m_dialog->isVisible()) << key;
        EXPECT_EQ(m_dialog->focusWidget(), Field(key));
        EXPECT_EQ(Texts(node), before) << key;
        EXPECT_FALSE(m_editor->slotAcceptChanges()) << key;
        QTest::keyClick(Field(key), Qt::Key_Escape);
        EXPECT_EQ(Note(key), note);
        EXPECT_TRUE(m_dialog->isVisible()) << "Escape first brings the value back";
    }
    Press(QDialogButtonBox::Ok);
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Text(node, "comment"), Q("changed"));
}

TEST_F(ViewEditor, SeveralFrequenciesMakeARangeAndNoneAPlainChannel) {
    Open(MediatorType::MemoryHF);
    Node* node = AddChannel(7055000, "net");
    Own<ValueList<double>>(node, "rangefrequencies").PushBack(1); // counts only in a range
    m_editor->DoWorkOn(Mediator(0));
    Show();
    auto* list = Field<VCFrequencyList>("rangefrequencies");
    EXPECT_EQ(list->toPlainText(), QString());
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(Text(node, "rangefrequencies"), Q("1")) << "what was not touched stays";
    Type("rangefrequencies", "7060;7065.5");
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClicks(list, Q("7.07 MHz;"));
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(Text(node, "range"), Q("true"));
    EXPECT_EQ(Text(node, "rangefrequencies"), Q("7060000;7065500;7070000"));
    EXPECT_EQ(list->toPlainText(), Q("7060.000 kHz\n7065.500 kHz\n7070.000 kHz"));

    // The copy is worked on, so fractions of 1 Hz that fields do not show have to be there from the start.
    Own<ValueList<double>>(node, "rangefrequencies").SetStringValue(Q("7060000.25;7065500"));
    m_editor->DoWorkOn(Mediator(0));
    list = Field<VCFrequencyList>("rangefrequencies");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClicks(list, Q("7080"));
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(Text(node, "rangefrequencies"), Q("7060000.25;7065500;7080000"));
    Type("rangefrequencies", "");
    Press(QDialogButtonBox::Ok);
    EXPECT_EQ(Text(node, "range"), Q("false"));
    EXPECT_EQ(Text(node, "rangefrequencies"), QString());
}

TEST_F(ViewEditor, OfSeveralChannelsOnlyWhatIsTouchedIsWrittenToAll) {
    Open(MediatorType::MemoryVUHF);
    std::vector<Node*> nodes;
    for (const char* name : {"a", "b", "c"})
        nodes.push_back(AddChannel(145e6 + 25e3 * static_cast<double>(nodes.size()), name));
    Own<ValueSelection>(nodes[0], "demodulation").AddItem(Q("FM"), 0, 7);
    Own<ValueSelection>(nodes[0], "demodulation").Select(Q("CW"));
    Own<ValueNumeric<int>>(nodes[2], "attenuation").SetValue(30);
    std::vector<FrequencyNodeMediator*> mediators;
    for (int i = 0; i < 3; ++i)
        mediators.push_back(Mediator(i));
    m_editor->DoWorkOn(mediators);
    Show();
    EXPECT_EQ(Field("rangefrequencies"), nullptr);
    EXPECT_EQ(Field<QComboBox>("demodulation")->findText(Q("FM")), -1) << "not all channels offer it";
    const QString differs = Q("differs; this is the first entry's");
    for (const char* key : {"frequency", "comment", "demodulation", "attenuation"})
        EXPECT_EQ(Note(key), differs) << key;
    EXPECT_EQ(Note("threshold"), Q("-40 to 110 dBµV"));

    std::vector<QStringList> before;
    for (Node* node : nodes)
        before.push_back(Texts(node));
    Press(QDialogButtonBox::Apply);
    for (size_t i = 0; i < nodes.size(); ++i)
        EXPECT_EQ(Texts(nodes[i]), before[i]);

    Type("threshold", "33");
    Field<QCheckBox>("usesquelch")->click();
    Choose("demodulation", 2); // the one that the first has already
    Field<QCheckBox>("apply-attenuation")->click();
    EXPECT_EQ(Note("attenuation"), Q("0 to 40 dB"));
    Press(QDialogButtonBox::Ok);
    for (size_t i = 0; i < nodes.size(); ++i) {
        EXPECT_EQ(Text(nodes[i], "threshold"), Q("33"));
        EXPECT_EQ(Text(nodes[i], "usesquelch"), Q("true"));
        EXPECT_EQ(Text(nodes[i], "demodulation"), Q("CW"));
        EXPECT_EQ(Text(nodes[i], "attenuation"), Q("5"));
        EXPECT_EQ(Text(nodes[i], "frequency"), QString::number(145000000 + 25000 * i));
        EXPECT_EQ(Text(nodes[i], "comment"), QString(QChar(u'a' + static_cast<char16_t>(i))));
    }
}

TEST_F(ViewEditor, EntriesThatEndMeanwhileAreToldAndKeepTheDialogOpen) {
    Open(MediatorType::MemoryHF);
    AddChannel(7055000, "a");
    Node* second = AddChannel(7060000, "b");
    m_editor->DoWorkOn({Mediator(0), Mediator(1)});
    Show();
    m_list->DeleteNode(m_list->Children().front());
    Type("threshold", "33");
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(Text(second, "threshold"), Q("33")) << "those that are left are written";
    m_list->DeleteNodes(m_list->Children());
    Type("threshold", "34");
    Press(QDialogButtonBox::Ok);
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_TRUE(m_editor->findChild<QLabel*>()->text().contains(Q("removed from the list")));
    // The tree itself may end below the editor.
    Tree::Instance()->GetRoot()->DeleteChildren();
    EXPECT_FALSE(m_editor->slotAcceptChanges());
    Press(QDialogButtonBox::Cancel);
    EXPECT_FALSE(m_dialog->isVisible());
}

} // namespace
