#pragma once

#include "host/base/textdecoder.h"

#include <QString>

#include <optional>

class FileProblems;

namespace REPORTGENERATOR {

/// The bytes of a text file as UTF-8, whatever its encoding: the file's own, where it is that.
class TextInput {
public:
    /// The device is the caller's and open; `name` stands for it in error texts. Throws RGException
    /// "name:line: reason" for what is no text.
    TextInput(QIODevice& device, const QString& name);

    QIODevice& Device() { return *m_device; }
    const TextForm& Form() const { return m_form; }
    /// Tells the operator when the file is not UTF-8.
    void Tell(FileProblems& problems) const;

private:
    TextForm m_form;
    QIODevice* m_device;
    std::optional<Utf8Device> m_converted;
};

} // namespace REPORTGENERATOR
