#pragma once

#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "tests/frequencystore/listrows.h"
#include "tests/support/recorder.h"

#include <QApplication>
#include <QDialog>
#include <QRegularExpression>
#include <QTimer>

/// The memory handler with a list node and a job in the tree, and a folder for files.
class MemoryFixture : public ListFixture {
protected:
    void SetUp() override {
        m_list = Tree::Instance()->MakeNode(Q("/Lists/Memory"));
        Tree::Instance()->MakeNode(Q("/JEN/Job"));
        m_job = GetOrCreateValue<Value<QString>>(Q("/JEN/Job/File"));
        m_data = GetOrCreateValue<Value<QString>>(Q("/JEN/Job/Data"));
        m_save = GetOrCreateValue<Value<bool>>(Q("/JEN/Job/Save"));
        m_suppress = GetOrCreateValue<Value<bool>>(Q("/JEN/Job/SuppressRestart"));
    }
    void TearDown() override {
        End();
        ListFixture::TearDown();
    }
    /// Ends the handler; whatever it asks is answered with "no".
    static void End() {
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->reject();
        });
        closer.start(0);
        MemorySystemHandler::DeleteInstance();
    }
    static MemorySystemHandler& Handler() { return *MemorySystemHandler::Instance(); }
    void Start(MediatorType type = MediatorType::MemoryHF) {
        Handler().SetListType(type);
        Handler().Init(m_list);
    }
    void BindJob() {
        Handler().SetJobfile_ValuePath(Q("/JEN/Job/File"));
        Handler().SetData4Jobfile_ValuePath(Q("/JEN/Job/Data"));
        Handler().SetSave2Job_ValuePath(Q("/JEN/Job/Save"));
    }
    /// Adds HF channels of these frequencies, as an operator does who accepts them.
    void AddChannels(const std::vector<double>& frequencies) {
        for (const double frequency : frequencies)
            Handler().SetNewEntry(frequency, 3000, QString::number(frequency), Q("USB"));
        Handler().UpdateJobFileEntries();
    }

    /// An HF channel as jobs hold it.
    static QByteArray Channel(int range, const QByteArray& name, const QByteArray& frequency) {
        const QByteArray number = QByteArray::number(range);
        return "<MEMORYSCAN_CHANNEL Range=\"" + number + "\" Name=\"" + name +
               "\" Enabled=\"true\"><MEMORYSCAN_SEQ_FREQUENCY Value=\"" + frequency +
               "\"/><MEMORYSCAN_SEQ_THRESHOLD Value=\"20\"/><MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD "
               "Value=\"USB\"/>"
               "<MEMORYSCAN_SEQ_IFBANDWIDTH Value=\"2700.000000\"/><MEMORYSCAN_SEQ_OUTPUTIFPATH "
               "Value=\"455.0 kHz\"/><MEMORYSCAN_SEQ_SHIFT Value=\"1500\"/><MEMORYSCAN_SEQ_BFOFREQUENCY "
               "Value=\"-800\"/></MEMORYSCAN_CHANNEL>";
    }
    static QByteArray SubJob(const QByteArray& channels) {
        return "<SUBJOB><TDS><MEMORYSCAN>" + channels + "</MEMORYSCAN><REC/></TDS></SUBJOB>";
    }
    static QByteArray Job(const QByteArray& content) { return "<JOB>\n" + content + "</JOB>"; }

    /// The values of each channel, those of `keys` or else what all kinds have, joined by "|".
    QStringList Channels(const QStringList& keys = {}) const {
        const QStringList usual = {Q("frequency"),    Q("bandwidthsel"), Q("comment"),
                                   Q("demodulation"), Q("threshold"),    Q("rangefrequencies")};
        return RowsOf(m_list, keys.isEmpty() ? usual : keys);
    }
    /// The "Value" of an element in each channel of a section or job.
    static QStringList ValuesOf(const QString& xml, const char* element) {
        QStringList values;
        const QString mark = QLatin1Char('<') + Q(element) + Q(" Value=\"");
        for (qsizetype at = xml.indexOf(mark); at >= 0; at = xml.indexOf(mark, at + 1)) {
            const qsizetype begin = at + mark.size();
            values << xml.mid(begin, xml.indexOf(QLatin1Char('"'), begin) - begin);
        }
        return values;
    }
    /// A job without its memory-scan sections and without blanks between its tags.
    static QString Outside(QString job) {
        static const QRegularExpression section(Q("<MEMORYSCAN>.*?</MEMORYSCAN>|<MEMORYSCAN/>"),
                                                QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression blanks(Q(">\\s+<"));
        return job.remove(section).replace(blanks, Q("><"));
    }

    Value<QString>* m_job = nullptr;
    Value<QString>* m_data = nullptr;
    Value<bool>* m_save = nullptr;
    Value<bool>* m_suppress = nullptr;
};
