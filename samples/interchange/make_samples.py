#!/usr/bin/env python3
"""Makes the sample files of other programs: the sample targets in each format that is written, and awkward files.

Usage: make_samples.py FREQSTORE_CLI [DIRECTORY]; without a directory the files are written beside this script.
"""

import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
# Format and name of the file that `freqstore-cli convert --to` makes of the sample targets.
WRITTEN = {
    "chirp-csv": "chirp.csv",
    "gqrx": "gqrx-bookmarks.csv",
    "kiwi-csv": "kiwi.csv",
    "kiwi-json": "kiwi-dx.json",
    "sdrangel": "sdrangel-scanner.csv",
    "fldigi": "fldigi-frequencies2.txt",
    "sdrpp": "sdrpp-frequency_manager_config.json",
    "sdrsharp": "sdrsharp-frequencies.xml",
    "json": "targets.json",
    "jsonl": "targets.jsonl",
}
# Files that are only read, and those with what is awkward: marks, encodings, short rows, quotes, unknown modes, times
# past midnight.
AWKWARD = {
    "gqrx-bandplan.csv": "# min, max, mode, step, color, name\n"
                         "1810000, 2000000, LSB, 100, #80AAFF00, 160 m\n"
                         "118000000, 136991667, AM, 8333, #8000AAFF, Airband\n",
    "sdrangel-annotations.csv": "Start,Width,Text,Show,Red,Green,Blue\n"
                                "87500000,20500000,\"Broadcast, FM\",1,255,0,0\n",
    "eibi-sked.csv": ("kHz:75;Time(UTC):93;Days:59;ITU:49;Station:201;Lng:49;Target:62;Remarks:135;P:35;Start:60;Stop:60;\n"
                      "5890;0600-0700;Mo-Fr;AUT;Radio Österreich;D;Eu;/MOS;1;;;\n"
                      "9410;2300-0200;;G;BBC;E;Af;;1;;;\n"
                      "7780;0000-2400;irr;USA;WRMI;E;NAm;;1;;;\n").encode("cp1252"),
    "chirp-awkward.csv": "\ufeff# exported\nFrequency,Location,Name,Mode,Comment,rToneFreq\n"
                         "145.600000,0,\"DB0XY, \"\"hill\"\"\",FM,north,88.5\n"
                         "438.725000,1,,XYZ\n"
                         "\"121,5\",2,Decimal comma,AM,,88.5\n",
    "sdrpp-old.json": '{"lists":{"Air":{"Guard":{"frequency":121500000.0,"bandwidth":10000.0,"mode":2},'
                      '"Odd":{"frequency":7000000.0,"bandwidth":0.0,"mode":4865}}}}\n',
    "kiwi-awkward.json": '{"dx":[\n[198,"AM","BBC%204","Droit\\nwich",{"T1":1,"lo":-4900,"hi":4900}],\n'
                         '[7850,"USB","CHU 100% sure","",{"T3":1,"d0":66,"b0":600,"e0":1800,"o":25}]\n]}\n',
    "sdrsharp-newer.xml": '<?xml version="1.0"?>\n<ArrayOfMemoryEntry>\n  <MemoryEntry>\n'
                          '    <IsFavourite>true</IsFavourite>\n    <Name>A &amp; B</Name>\n'
                          '    <GroupName>Air</GroupName>\n    <Frequency>121500000</Frequency>\n'
                          '    <DetectorType>AM</DetectorType>\n    <Shift>0</Shift>\n'
                          '    <FilterBandwidth>10000</FilterBandwidth>\n    <IsScanned>true</IsScanned>\n'
                          '    <CenterFrequency>0</CenterFrequency>\n  </MemoryEntry>\n</ArrayOfMemoryEntry>\n',
    "detections.jsonl": '{"frequency":121500000,"bandwidth":8330,"id":1,"level":-71,"starttime":"2026-05-01T18:30:00Z",'
                        '"stoptime":"2026-05-01T18:31:00Z","confidence":90,"modulation":"A3E","decoder":"",'
                        '"longitude":13.4,"latitude":52.5}\n'
                        '{"frequency":7055000,"bandwidth":2700,"id":2,"level":-90,"starttime":"2026-05-01T18:30:05Z",'
                        '"decoder":"","azimuth":271}\n',
    "scanner-table.tsv": "Call\tFreq\tRemarks\nTower\t118,100\tday only\nGuard\t121,500\t\n",
}


def main():
    program = sys.argv[1]
    folder = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else HERE
    for format_id, name in WRITTEN.items():
        subprocess.run([program, "convert", HERE.parent / "targets.ltl", folder / name, "--to", format_id], check=True)
    for name, content in AWKWARD.items():
        (folder / name).write_bytes(content if isinstance(content, bytes) else content.encode("utf-8"))
    for format_id in ("geojson", "kml"):  # one of the detections has no location: the exit code is 2
        subprocess.run([program, "convert", "--list", "detections-vuhf", folder / "detections.jsonl",
                        folder / f"detections.{format_id}", "--to", format_id])


if __name__ == "__main__":
    main()
