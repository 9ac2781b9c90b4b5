#!/usr/bin/env python3
"""Makes the sample lists from two tables: targets.tsv (the frequencies) and services.tsv (what they belong to).

Usage: make_samples.py [DIRECTORY]; without one the files are written beside the tables.
"""

import csv
import datetime
import io
import pathlib
import sys
from xml.etree import ElementTree

HERE = pathlib.Path(__file__).resolve().parent
NO_PRIORITY_LETTER = "g"
NOI_LETTER = "d"
LETTERS = dict(zip(range(1, 10), "ponmlkjih"))
CSV_COLUMNS = ("Frequency", "Bandwidth", "Comment", "Demodulation", "Type", "Priority", "ThreatClass",
               "ProfileID", "ProfileName", "SignalClass", "TransmissionSystem")


def read_table(name):
    with open(HERE / name, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE))


def letter(target):
    return LETTERS.get(int(target["priority"]), NO_PRIORITY_LETTER)


def six_decimals(text):
    return f"{float(text):.6f}"


def ltl(targets):
    """frequency, bandwidth, comment, demodulation, type letter, threat class, priority"""
    return "".join(
        "".join(field + "\t" for field in (
            six_decimals(t["frequency"]), six_decimals(t["bandwidth"]), t["comment"], t["demodulation"],
            letter(t), t["threat class"], t["priority"])) + "\n"
        for t in targets)


def sfl(targets):
    """frequency, comment, bandwidth, demodulation"""
    return "".join(
        "\t".join((t["frequency"], t["comment"], t["bandwidth"], t["demodulation"])) + "\n" for t in targets)


def between(targets, low, high):
    return [t for t in targets if low <= float(t["frequency"]) < high]


def child(parent, tag, text=None):
    element = ElementTree.SubElement(parent, tag)
    element.text = text
    return element


def document(root):
    ElementTree.indent(root, " ")
    text = ElementTree.tostring(root, encoding="unicode").replace(" />", "/>")
    return f'<?xml version="1.0" encoding="UTF-8"?>\n{text}\n'


def frequency_store_xml(targets, services):
    root = ElementTree.Element("FrequencyStoreList", Version="1", Usage="TargetList")
    for t in targets:
        service = services[t["service"]]
        entry = ElementTree.SubElement(root, "FrequencyStoreEntry", Type=letter(t))
        child(entry, "Comment", t["comment"])
        settings = child(entry, "FFM_Settings")
        child(settings, "Frequency", t["frequency"])
        child(settings, "IFBandwidth", t["bandwidth"])
        child(settings, "AnalogDemod", t["demodulation"])
        profile = child(entry, "Profile_Data")
        child(profile, "SignalClass", service["signal class"])
        child(profile, "ProfileID", t["service"])
        child(profile, "TransmissionSystem", service["transmission system"])
        child(profile, "ProfileName", service["name"])
        child(profile, "Priority", t["priority"])
        child(profile, "ThreatClass", t["threat class"])
    return document(root)


def frequency_store_csv(targets, services):
    out = io.StringIO()
    writer = csv.writer(out, lineterminator="\r\n")
    writer.writerow(CSV_COLUMNS)
    for t in targets:
        service = services[t["service"]]
        writer.writerow((t["frequency"], t["bandwidth"], t["comment"], t["demodulation"], letter(t),
                         t["priority"], t["threat class"], t["service"], service["name"],
                         service["signal class"], service["transmission system"]))
    return out.getvalue()


def profile_table(targets, services):
    root = ElementTree.Element("PROFILETABLE")
    for key, service in services.items():
        profile = child(root, "PROFILETBL")
        child(profile, "PROFILEID", key)
        child(profile, "PROFILENAME", service["name"])
        child(profile, "SIGNALCLASS", service["signal class"])
        for description in service["objects (name:priority:threat class)"].split(";"):
            name, priority, threat = description.split(":")
            entry = child(profile, "OBJECTENTRY")
            child(entry, "OBJECT_NAME", name)
            child(entry, "PRIORITY", priority)
            child(entry, "THREATCLASS", threat)
        for t in targets:
            if t["service"] == key:
                parameters = child(profile, "PROFILEPARAMETERSETTBL")
                child(parameters, "NOMINALFREQUENCY", t["frequency"])
                child(parameters, "NOMINALBANDWIDTH", t["bandwidth"])
                child(parameters, "MODULATIONTYPE", t["demodulation"])
    return document(root)


def noi(targets):
    """frequency, comment, bandwidth; an empty line follows each entry"""
    return "".join("\t".join((six_decimals(t["frequency"]), t["comment"], six_decimals(t["bandwidth"]))) + "\t\n\n"
                   for t in targets)


def noi_xml(targets):
    root = ElementTree.Element("FrequencyStoreList", Version="1", Usage="NOI")
    for t in targets:
        entry = ElementTree.SubElement(root, "FrequencyStoreEntry", Type=NOI_LETTER)
        child(entry, "Comment", t["comment"])
        settings = child(entry, "FFM_Settings")
        child(settings, "Frequency", t["frequency"])
        child(settings, "IFBandwidth", t["bandwidth"])
    return document(root)


def noi_csv(targets):
    out = io.StringIO()
    writer = csv.writer(out, lineterminator="\r\n")
    writer.writerow(("Frequency", "Bandwidth", "Comment", "Type"))
    writer.writerows((t["frequency"], t["bandwidth"], t["comment"], NOI_LETTER) for t in targets)
    return out.getvalue()


def results_xml(targets):
    """What a classifier made of the signals at these frequencies: a third of them it did not lock to, and of some
    that it did lock to it tells no confidence."""
    begin = datetime.datetime(2024, 5, 1, 6, 0, tzinfo=datetime.timezone.utc)
    root = ElementTree.Element("FrequencyStoreList", Version="1", Usage="SearchResults")
    for i, t in enumerate(targets):
        locked = i % 3 != 0
        confidence = 40 + i * 37 % 60 if locked and i % 5 != 1 else 0
        letter_of_result = "p" if confidence else "b" if locked else "c"
        entry = ElementTree.SubElement(root, "FrequencyStoreEntry", Type=letter_of_result)
        child(entry, "Comment", t["comment"])
        settings = child(entry, "FFM_Settings")
        child(settings, "Frequency", t["frequency"])
        child(settings, "IFBandwidth", t["bandwidth"])
        result = child(entry, "ResultList")
        child(result, "Reason", "LOCKED" if locked else "UNLOCKED")
        time = begin + datetime.timedelta(seconds=i * 43 + i * i % 29)
        child(result, "ResultTime", time.strftime("%Y-%m-%dT%H:%M:%SZ"))
        child(result, "Confidence", str(confidence))
    return document(root)


def receiver_settings(number, target, receiver):
    settings = {
        "CHANNELNUMBER": number,
        "FREQUENCY": six_decimals(target["frequency"]),
        "THRESHOLD": 20,
        "ANALOGDEMOD_METHOD": target["demodulation"],
        "IFBANDWIDTH": six_decimals(target["bandwidth"]),
    }
    if receiver == "hf":
        return settings | {"OUTPUTIFPATH": "48.0 kHz", "SHIFT": 20000,
                           "BFOFREQUENCY": 800 if target["demodulation"] == "CW" else 0}
    return settings | {"AFC": "false", "USEQUELCH": "true", "ATTENUATION_MODE": "Automatic", "ATTENUATION": 0,
                       "ANTENNAID": 1}


def memory_scan(targets, receiver):
    section = ElementTree.Element("MEMORYSCAN")
    for number, t in enumerate(targets, 1):
        channel = ElementTree.SubElement(section, "MEMORYSCAN_CHANNEL", Range=str(number), Name=t["comment"],
                                         Value=str(number), Enabled="true")
        for key, value in receiver_settings(number, t, receiver).items():
            ElementTree.SubElement(channel, f"MEMORYSCAN_SEQ_{key}", Value=str(value))
    return section


def job(targets, receiver):
    """A job of four sub-jobs: two that hold the same memory-scan section, one without a section and one without any
    settings of a scan. Around and in them stands what other programs keep there."""
    root = ElementTree.Element("JOB", {"Name": f"Sample job, {receiver}", "Operator": "Ålesund <vakt>", "Revision": "7"})
    root.append(ElementTree.Comment(" Plan for the \"quiet\" weeks & after "))
    ElementTree.SubElement(root, "ANTENNAPLAN", Mast="2", Heading="045.50")
    for name in ("Day", "Night", "Survey", "Idle"):
        subjob = ElementTree.SubElement(root, "SUBJOB", Name=name, Start="06:00" if name == "Day" else "18:00")
        if name == "Idle":
            child(subjob, "REMARK", "No scan: the receiver is switched off & cools down.")
            continue
        tds = ElementTree.SubElement(subjob, "TDS", Task="scan")
        ElementTree.SubElement(tds, "DWELLTIME", Value="500")
        if name != "Survey":
            tds.append(memory_scan(targets, receiver))
        ElementTree.SubElement(tds, "RECORDING", Value="false", Format="raw;48k")
    return document(root)


def memory_xml(targets):
    """Memory channels for exchange: only what a channel shares with other entries, and the level."""
    root = ElementTree.Element("FrequencyStoreList", Version="1", Usage="MemoryChannels")
    for t in targets:
        entry = ElementTree.SubElement(root, "FrequencyStoreEntry", Type="a")
        child(entry, "Comment", t["comment"])
        settings = child(entry, "FFM_Settings")
        child(settings, "Frequency", t["frequency"])
        child(settings, "IFBandwidth", t["bandwidth"])
        child(settings, "AnalogDemod", t["demodulation"])
        child(settings, "Level", "25")
        if t["demodulation"] == "CW":
            child(child(settings, "Detail"), "BFOFrequency", "800")
    return document(root)


def main():
    directory = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE
    targets = read_table("targets.tsv")
    services = {row["service"]: row for row in read_table("services.tsv")}
    interest = [t for t in targets if t["threat class"] == "high"]
    files = {
        "targets.ltl": b"\xff\xfe" + ltl(targets).encode("utf-16-le"),
        "targets-utf8.ltl": b"\xef\xbb\xbf" + ltl(targets).encode("utf-8"),
        "targets.xml": frequency_store_xml(targets, services).encode("utf-8"),
        "targets.csv": frequency_store_csv(targets, services).encode("utf-8"),
        "shortwave.sfl": b"\xff\xfe" + sfl(between(targets, 1.8e6, 30e6)).encode("utf-16-le"),
        "airband.sfl": b"\xef\xbb\xbf" + sfl(between(targets, 108e6, 137e6)).encode("utf-8"),
        "interest.noi": b"\xff\xfe" + noi(interest).encode("utf-16-le"),
        "interest.xml": noi_xml(interest).encode("utf-8"),
        "interest.csv": noi_csv(interest).encode("utf-8"),
        "results.xml": results_xml(targets[::9]).encode("utf-8"),
        "job-hf.pij": job([t for t in targets if t["service"] in ("TIME", "AERO-VOLMET")], "hf").encode("utf-8"),
        "job-vuhf.pij": job([t for t in targets if t["service"].startswith("AIR-V")], "vuhf").encode("utf-8"),
        "memory-hf.sfl": b"\xff\xfe" + sfl([t for t in targets if t["service"] == "HAM-CW"]).encode("utf-16-le"),
        "memory-hf.xml": memory_xml(between(targets, 3e6, 8e6)).encode("utf-8"),
        "memory-vuhf.xml": memory_xml(between(targets, 156e6, 163e6)).encode("utf-8"),
        "profiles.xml": profile_table(targets, services).encode("utf-8"),
    }
    for name, content in files.items():
        (directory / name).write_bytes(content)
    print(f"{len(targets)} targets, {len(services)} profiles, {len(files)} files", file=sys.stderr)


if __name__ == "__main__":
    main()
