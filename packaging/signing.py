"""Signs Windows files with osslsigncode."""
import os
import subprocess

from identity import PRODUCT

PASSWORD = "LM_SIGN_PASSWORD"


class SigningError(Exception):
    """What is wrong with the key, for whoever named it."""


def key_arguments(key):
    """A .p12 or .pfx file with key and certificate, or a PEM file with both."""
    if not os.path.isfile(key):
        raise SigningError(f"{key}: expected a file with key and certificate (.p12, .pfx or .pem), found none")
    if key.lower().endswith((".p12", ".pfx")):
        arguments = ["-pkcs12", key]
    else:
        arguments = ["-certs", key, "-key", key]
    if PASSWORD in os.environ:
        arguments += ["-pass", os.environ[PASSWORD]]
    return arguments


def time_arguments(epoch):
    """The option that names the time of signing; its name changed between versions."""
    told = subprocess.run(["osslsigncode", "sign", "--help"], capture_output=True, text=True, check=False)
    option = "-time" if "-time <" in told.stdout + told.stderr else "-st"
    return [option, str(epoch)]


def sign(path, key, epoch):
    """Signs the file in its place."""
    signed = path + ".signed"
    result = subprocess.run(
        ["osslsigncode", "sign", *key_arguments(key), "-h", "sha256", "-n", PRODUCT, *time_arguments(epoch),
         "-in", path, "-out", signed], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if result.returncode != 0:
        raise SigningError(f"{os.path.basename(path)} could not be signed with {key}:\n{result.stdout.strip()}")
    os.replace(signed, path)
