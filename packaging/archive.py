"""A zip file that is the same whenever it is made of the same files."""
import os
import time
import zipfile

from installer import files_below

FILE = 0o100644


def make_zip(path, folder, top, epoch):
    """Packs what is in `folder` below the folder name `top`."""
    # The format knows no time before 1980 and no odd second.
    moment = max(time.gmtime(epoch)[:6], (1980, 1, 1, 0, 0, 0))
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name in files_below(folder):
            entry = zipfile.ZipInfo(f"{top}/{name}", moment)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # as if made on Windows, on every system
            entry.external_attr = FILE << 16
            with open(os.path.join(folder, name), "rb") as file:
                archive.writestr(entry, file.read())
