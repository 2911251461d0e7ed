"""Names and numbers by which Windows and AutoCAD know the product."""
import uuid

PRODUCT = "Lumetrapad plug-in for AutoCAD 2013"
MAKER = "Lumetra"
BUNDLE = "Lumetrapad.bundle"
CONTENTS = "Contents"
MODULE = "LMTRAutoCAD2013.arx"

# Every other number follows from this one. It never changes, or an upgrade would install a second product.
NAMESPACE = uuid.UUID("5b0f3a52-6c8e-4f0e-9d57-2a1c64e0b913")


def guid(name):
    """The number that belongs to a name, for ever."""
    return "{" + str(uuid.uuid5(NAMESPACE, name)).upper() + "}"


def upgrade_code():
    """The same for all versions: by it an installer finds the one to replace."""
    return guid("upgrade")


def product_code(version):
    """Another one for each version: versions are products of their own to Windows."""
    return guid("product " + version)


def component_code(path):
    """The same as long as the file has the same place in the bundle."""
    return guid("component " + path)
