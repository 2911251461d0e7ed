"""What the tests of the exporter report a failure with."""


class Failure(Exception):
    pass


def require(condition, text):
    if not condition:
        raise Failure(text)
