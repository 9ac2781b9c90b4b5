#pragma once

#include "host/report/irgobject.h"

#include <functional>

namespace FreqStoreXml {

/// A list that keeps nothing: each record goes to the callback when it is complete, and its object is used
/// again for the next. The callback belongs to the caller.
template <class T>
class PassingList final : public REPORTGENERATOR::IObjectList {
public:
    explicit PassingList(const std::function<void(const T&)>& callback) : m_callback(callback) {}

    qsizetype Size() const override { return 0; }
    const REPORTGENERATOR::IRGObject& At(qsizetype) const override { return m_record; }
    REPORTGENERATOR::IRGObject& Append() override {
        m_record = T();
        return m_record;
    }
    void Completed() override { m_callback(m_record); }
    void Clear() override {}

private:
    const std::function<void(const T&)>& m_callback;
    T m_record;
};

} // namespace FreqStoreXml
