"""The version that the header of a Windows file's version resource names."""
import struct

SIGNATURE = struct.pack("<I", 0xFEEF04BD)


def pe_version(path):
    """Text like "2.9.2.0"; None for a file without a version resource."""
    with open(path, "rb") as file:
        data = file.read()
    at = data.find(SIGNATURE)
    if data[:2] != b"MZ" or at < 0:
        return None
    minor, major, revision, build = struct.unpack_from("<4H", data, at + 8)
    return f"{major}.{minor}.{build}.{revision}"
