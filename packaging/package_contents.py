"""PackageContents.xml, by which AutoCAD's autoloader knows what to load from the bundle."""
from xml.sax.saxutils import quoteattr

from identity import CONTENTS, MAKER, MODULE, PRODUCT, product_code, upgrade_code

# AutoCAD 2013 and no other release: the module asks for the interface of release 19.0. The star takes in the products
# built on AutoCAD.
TEMPLATE = """<?xml version="1.0" encoding="utf-8"?>
<ApplicationPackage SchemaVersion="1.0" ProductType="Application" AutodeskProduct="AutoCAD"
    Name={product} Description="Drives the drawing with the six-axis device Lumetrapad"
    Author={maker} AppVersion={version} ProductCode={product_code} UpgradeCode={upgrade_code}
    HelpFile={help}>
  <CompanyDetails Name={maker} />
  <Components Description={product}>
    <RuntimeRequirements OS="Win64" Platform="AutoCAD*" SeriesMin="R19.0" SeriesMax="R19.0" />
    <ComponentEntry AppName={name} Version={version} ModuleName={module}
        AppDescription={product} LoadOnAutoCADStartup="True" />
  </Components>
</ApplicationPackage>
"""


def package_contents(version):
    values = {"product": PRODUCT, "maker": MAKER, "version": version, "product_code": product_code(version),
              "upgrade_code": upgrade_code(), "name": MODULE.split(".")[0], "module": f"./{CONTENTS}/{MODULE}",
              "help": f"./{CONTENTS}/help/using.html"}
    return TEMPLATE.format(**{key: quoteattr(value) for key, value in values.items()})
