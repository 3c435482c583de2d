#!/usr/bin/env python3
"""Writes the chart files beside this script, which the tests read, save and read again.

The records are put together here field by field from the tables of the formats and share no code
with the program. "_saved" is what the program has to make of the file when it saves it, where that
differs: fields that a format holds and nothing reads back, and comment blocks in a new order.
"""
import pathlib
import struct

HERE = pathlib.Path(__file__).parent


def text(value, width):
    data = value if isinstance(value, bytes) else value.encode("cp1252")
    return data[:width].ljust(width, b" ")


def event(name, place, country, longitude, latitude, date, time, zone, zone_name, reserved=0):
    year, month, day = date
    return (text(name, 50) + text(place, 20) + text(country, 20)
            + struct.pack("<ffhBB", longitude, latitude, year, month, day)
            + struct.pack("<BBB", *time) + struct.pack("<f", zone) + text(zone_name, 5)
            + struct.pack("<B", reserved))


BLANK_EVENT = event("", "", "", 0, 0, (0, 0, 0), (0, 0, 0), 0, "")
EVENT_A = event("A name of fifty characters, all of which are kept!", "Sm\u00f8rh\u00f8yfjordvegen\u00e6n", "Norge",
                -10.75, 59.925, (1987, 6, 5), (23, 59, 58), -1.5, "MEST", 7)
EVENT_B = event("Ides of March", "Roma", "Italia", -12.5, -41.25, (-43, 3, 15), (11, 0, 1), 0.25,
                "LMT")


def chart(chart_type, subtype, first, second, *, reserved=(0, "", "", 0), house=0, ayanamsa=0,
          value=0.0, form=1, ref=0, extra1=0, extra2=0, pair=(0, 0), flags=0, extra3=0,
          extra4=0.0):
    data = (struct.pack("<BB", chart_type, subtype) + first + struct.pack("<B", reserved[0])
            + text(reserved[1], 2) + text(reserved[2], 30) + struct.pack("<B", reserved[3])
            + struct.pack("<BBfBi", house, ayanamsa, value, form, ref) + second
            + struct.pack("<hBBBBBd", extra1, extra2, *pair, flags, extra3, extra4))
    assert len(data) == 292
    return data


def charts(refs):
    second = event("Second title", "", "", 1.5, -2.5, (1900, 1, 2), (3, 4, 5), 6.0, "UT", 9)
    return [chart(2, 44, EVENT_A, second, reserved=(1, "ab", "reserved text", 2), house=5,
                  ayanamsa=10, value=24.5, form=3, ref=refs[0], extra1=-2, extra2=3, pair=(4, 5),
                  flags=3, extra3=6, extra4=1.25),
            chart(13, 99, EVENT_B, BLANK_EVENT, ref=refs[1]),
            chart(1, 1, event("", "", "", 0, 0, (1, 1, 1), (0, 0, 0), 0, ""), BLANK_EVENT,
                  ref=refs[2])]


def head(version, slot):
    return (struct.pack("<h", version) + text("  Charts of a script", 80)).ljust(slot, b"\0")


def format0(name, types, place, country, zone, zone_name, numbers, longitude, latitude, codes):
    data = (text(name, 30) + struct.pack("<hh", *types) + text(place, 20) + text(country, 20)
            + struct.pack("<f", zone) + text(zone_name, 5) + struct.pack("<6h", *numbers)
            + struct.pack("<3h", *longitude) + struct.pack("<3h", *latitude)
            + struct.pack("<4h", *codes))
    assert len(data) == 115
    return data


def format0_file(saved):
    # The packed form has minutes * 100 + seconds. Saved, every record has it, "east" is -1 and the
    # reserved number (the third code) is 0.
    packed = format0("Thirty letters are all it has.", (2, 44), "Oslo", "Norge", -1.5, "MEST",
                     (5, 6, 1987, 23, 59, 58), (10, 4530, -1 if saved else 1), (59, 5559, -1),
                     (5, 10, 0 if saved else 77, 3))
    plain = format0("Ides of March", (13, 99), "Roma", "Italia", 0.25, "LMT",
                    (15, 3, -43, 11, 0, 1), (12, 3000 if saved else 30, 0),
                    (41, 1500 if saved else 15, 0), (0, 0, 0, 1 if saved else 0))
    return packed + plain


def format1(flags, name, types, place, country, zone, zone_name, date, time, longitude, latitude,
            house, ayanamsa, value, form, ref):
    year, month, day = date
    data = (bytes(types) + bytes(flags) + text(name, 30) + text(place, 20) + text(country, 20)
            + struct.pack("<f", zone) + text(zone_name, 5) + struct.pack("<BBh", day, month, year)
            + bytes(time) + bytes(longitude) + bytes(latitude) + bytes((house, ayanamsa))
            + struct.pack("<fBi", value, form, ref))
    assert len(data) == 110
    return data


def format1_file(saved):
    # Flags, the first of the pair and extra3 aren't read back. The chains of the comments start at
    # other blocks in the saved file.
    refs = (2, 4) if saved else (5, 7)
    return (head(1, 110)
            + format1((0, 0, 0) if saved else (3, 4, 6), "Thirty letters are all it has.", (2, 44),
                      "Oslo", "Norge", -1.5, "MEST", (1987, 6, 5), (23, 59, 58), (0, 10, 45, 30),
                      (1, 59, 55, 59), 5, 10, 24.5, 3, refs[0])
            + format1((0, 0, 0), "Ides of March", (13, 99), "Roma", "Italia", 0.25, "LMT",
                      (-43, 3, 15), (11, 0, 1), (1, 12, 30, 0), (0, 41, 15, 0), 0, 0, 0, 1,
                      refs[1]))


def block(following, value):
    return struct.pack("<i", following) + text(value, 28)


TWENTY_EIGHT = "Exactly 28 characters of it."
TWENTY_NINE = "This one has 29 characters.\r\n"


def comments_in_order(texts):
    blocks = [block(0, "")]
    for value in texts:
        parts = [value[i:i + 28] for i in range(0, len(value), 28)]
        for number, part in enumerate(parts):
            is_last = number == len(parts) - 1
            blocks.append(block(0 if is_last else len(blocks) + 2, part))
    return b"".join(blocks)


def comments_out_of_order():
    # 29 characters at block 5, which goes on at 3; 28 at block 7; 2, 6 and 4 are free.
    return b"".join((block(6, ""), block(0, "old text"), block(0, TWENTY_NINE[28:]), block(2, ""),
                     block(3, TWENTY_NINE[:28]), block(4, ""), block(0, TWENTY_EIGHT)))


def long_text(value):
    data = value.encode("cp1252")
    return struct.pack("<i", len(data)) + data


def format3_file():
    first, second, third = charts((1, 2, 3))
    return (struct.pack("<h", 3) + text("  Charts of a script", 80) + struct.pack("<i", 3)
            + first + struct.pack("<i", 2) + EVENT_B + long_text("A note,\r\nof two lines \u00df ")
            + EVENT_A + long_text("") + long_text(TWENTY_NINE)
            + second + struct.pack("<i", 0) + long_text("")
            + third + struct.pack("<i", 1) + BLANK_EVENT + long_text("n") + long_text(TWENTY_EIGHT))


FILES = {
    "type0.cht": format0_file(False),
    "type0_saved.cht": format0_file(True),
    "type1.cht": format1_file(False),
    "type1": comments_out_of_order(),
    "type1_saved.cht": format1_file(True),
    "type1_saved": comments_in_order([TWENTY_NINE, TWENTY_EIGHT]),
    "type2.cht": head(2, 292) + b"".join(charts((2, 0, 3))),
    "type2": comments_in_order([TWENTY_EIGHT, TWENTY_NINE]),
    "type3.ch6": format3_file(),
}

if __name__ == "__main__":
    for name, data in FILES.items():
        (HERE / name).write_bytes(data)
