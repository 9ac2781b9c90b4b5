#pragma once

#include <QString>

#include <exception>

namespace REPORTGENERATOR {

/// Base of the report library's exceptions: an error text for the operator that names file, line and reason
/// where they are known.
class ReportException : public std::exception {
public:
    explicit ReportException(const QString& errorText) : m_errorText(errorText), m_what(errorText.toUtf8()) {}

    /// The message, for traces and message boxes.
    const QString& GetErrorText() const { return m_errorText; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_errorText;
    QByteArray m_what;
};

/// The error that all operations of the report and interchange libraries throw.
class RGException : public ReportException {
public:
    using ReportException::ReportException;
};

} // namespace REPORTGENERATOR

using REPORTGENERATOR::ReportException;
using REPORTGENERATOR::RGException;
