#pragma once

#include <QString>

#include <vector>

/// A model of radio that can be connected.
struct RadioModel {
    enum class Port { None, Serial, Network, Other };

    int number; ///< of the radio library
    QString maker;
    QString name;
    Port port;
    int speed; ///< the highest one of a serial line, in baud; 0 without one

    QString FullName() const { return maker + QLatin1Char(' ') + name; }
};

/// All models, by maker and name.
const std::vector<RadioModel>& RadioModels();
/// Null when there is none of that number.
const RadioModel* FindRadioModel(int number);

/// How to reach one radio.
struct RadioProfile {
    static constexpr int DefaultTimeout = 1000;
    static constexpr int Dummy = 1;  ///< model without a radio
    static constexpr int Client = 2; ///< model that speaks to another program

    QString name = {}; ///< as the operator calls it; may be empty
    int model = Dummy;
    QString port = {};            ///< a device, or host:port
    int speed = 0;                ///< baud; 0 for that of the model
    int timeout = DefaultTimeout; ///< ms that one answer may take

    /// The profile's name, or the model and where it is.
    QString Title() const;
    /// What is wrong with it; empty when nothing is.
    QString Problem() const;

    /// The profiles that the settings keep, by name.
    static std::vector<RadioProfile> Load();
    static void Save(const std::vector<RadioProfile>& profiles);
};
