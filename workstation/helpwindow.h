#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;

/// The guide: its topics, the text of one, and a field that finds words in it. The texts lie in the program,
/// in the language of the window where there are such, else in English; their pictures lie beside it.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    /// Brings up the guide of a window, whose it is, at what belongs to the widget that has the focus.
    static HelpWindow* ShowFor(QWidget& window, const QWidget* focus);
    /// The topics in the order of the contents.
    static QStringList Topics();
    /// The topic of a widget, by its class or that of one around it.
    static QString TopicOf(const QWidget* widget);
    /// The text of a topic in a language ("de"), as Markdown; that in English where there is none.
    static QString TextOf(const QString& topic, const QString& language);
    /// The folder of the pictures of a program that lies in `programDirectory`, in a language; empty when
    /// they are not there.
    static QString FindPictures(const QString& programDirectory, const QString& language);

    explicit HelpWindow(QWidget* parent);

    void ShowTopic(const QString& topic);
    QString GetTopic() const;
    QTextBrowser* GetText() const { return m_text; }
    QLineEdit* GetFind() const { return m_find; }
    /// Goes to the next place of the word, from the top again at the end; false, said, when there is none.
    bool FindNext(bool backward = false);

private:
    void showCurrent();

    QString m_language;
    QListWidget* m_contents;
    QTextBrowser* m_text;
    QLineEdit* m_find;
    QLabel* m_found;
};
