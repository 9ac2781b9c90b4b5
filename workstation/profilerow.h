#pragma once

#include <QWidget>

#include <algorithm>
#include <vector>

class QComboBox;
class QPushButton;

/// A row with the name of what a dialog connects: the operator types one to keep it, chooses one that is
/// kept, or has it forgotten.
class ProfileRow : public QWidget {
    Q_OBJECT

public:
    /// `tip` and `removeTip` say what has such a name.
    ProfileRow(const QStringList& names, const QString& tip, const QString& removeTip, QWidget* parent);

    /// Without spaces around it; empty for what is not to be kept.
    QString GetName() const;
    /// Chooses nothing: whoever shows a profile shows its name.
    void SetName(const QString& name);

signals:
    /// One of the names was chosen.
    void Chosen(const QString& name);
    void Edited();
    /// A name was taken out of the list.
    void Forgotten(const QString& name);

private:
    void forget();
    void showName();

    QComboBox* m_name;
    QPushButton* m_remove;
};

/// The profiles of one kind that the settings keep, by name. `Profile` has a name, and loads and saves all.
template <typename Profile>
class KeptProfiles {
public:
    QStringList GetNames() const {
        QStringList names;
        for (const Profile& profile : m_profiles)
            names << profile.name;
        return names;
    }
    const std::vector<Profile>& GetAll() const { return m_profiles; }
    /// Null when there is none.
    const Profile* Find(const QString& name) const {
        const auto found = std::ranges::find(m_profiles, name, &Profile::name);
        return found == m_profiles.end() ? nullptr : &*found;
    }
    /// In place of one of the same name. One without a name is not kept.
    void Keep(const Profile& kept) {
        if (kept.name.isEmpty())
            return;
        drop(kept.name);
        m_profiles.push_back(kept);
        std::ranges::sort(m_profiles, {}, &Profile::name);
        Profile::Save(m_profiles);
    }
    void Forget(const QString& name) {
        drop(name);
        Profile::Save(m_profiles);
    }

private:
    void drop(const QString& name) {
        std::erase_if(m_profiles, [&](const Profile& profile) { return profile.name == name; });
    }

    std::vector<Profile> m_profiles = Profile::Load();
};
