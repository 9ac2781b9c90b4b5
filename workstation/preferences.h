#pragma once

#include "receiver/receiversettings.h"
#include "workstation/look.h"

#include <QObject>

#include <vector>

class MainWindow;

/// What the operator prefers, in `Application.ini`: settings of which each has one of a few values. They are
/// read and applied at the start; a value there that is none is told, and the default holds. What is set is
/// kept and takes effect at once, but for what says otherwise. The look ends with this object.
class Preferences : public QObject {
    Q_OBJECT

public:
    enum Id {
        UnitHF,
        UnitVUHF,
        ListUnit,
        GroupThousands,
        Theme,
        FontSize,
        Language,
        BandPlanRegion,
        SpreadsheetSafe,
        Versions,
        VersionsSize,    ///< of all together, in megabytes
        RecoverySeconds, ///< how long a change may be in no file
        Count
    };
    /// A page of the dialog.
    enum Page { Frequencies, Appearance, Files, PageCount };

    struct Choice {
        QString value; ///< as the settings have it
        QString label;
    };

    explicit Preferences(ReceiverKind kind);
    ~Preferences() override;

    /// Applies to a window, which is not owned and outlives this, what needs one.
    void SetWindow(MainWindow& window);

    static Page PageOf(Id id);
    static QString LabelOf(Id id);
    static QString TipOf(Id id);
    /// What can be chosen; the first one is the default.
    static std::vector<Choice> ChoicesOf(Id id);
    /// Whether it takes effect when the program starts the next time.
    static bool IsForNextStart(Id id);

    /// The value that holds; the default for one that is none.
    static QString Get(Id id);
    /// `value` is one of the choices.
    void Set(Id id, const QString& value);

    /// The folder of the lists' own files that was chosen for the next start; empty for the usual one.
    static QString DataFolder();
    static void SetDataFolder(const QString& folder);

signals:
    /// One of them has another value.
    void Changed();

private:
    void apply(Id id);
    void styleLists();

    ReceiverKind m_kind;
    Look m_look;
    MainWindow* m_window = nullptr;
};
