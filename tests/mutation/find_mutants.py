"""Finds in C++ sources the places for small breakages, by way of clang's syntax tree.

A place is a part of the text; its mutants are texts to put there. `kind` is "expression", which is replaced within its
statement; "condition", the same for what is of a class that converts to bool; or "statement", which is replaced whole,
with its semicolon.
"""
import ctypes
import re
import sys
from dataclasses import asdict, dataclass, field

sys.path.append("/usr/lib/python3/dist-packages")  # where Debian puts the bindings, whichever python3 runs
from clang import cindex  # noqa: E402
from clang.cindex import CursorKind as Kind, TypeKind  # noqa: E402


@dataclass
class Place:
    start: int
    end: int
    kind: str
    changes: list = field(default_factory=list)  # of (text to put there, what the report says)


BOUNDARY = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
OPPOSITE = {"<": ">=", "<=": ">", ">": "<=", ">=": "<", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "&": "|", "|": "&", "^": "|", "<<": ">>", ">>": "<<"}
ASSIGNMENT = {"+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "%=": "*=", "|=": "&=", "&=": "|=", "<<=": ">>=", ">>=": "<<="}
# Of the operators of classes those whose opposite the class can be expected to have.
OVERLOADED = {"+": "-", "-": "+", "+=": "-=", "-=": "+="}
EXTREMES = {"std::max": "std::min", "std::min": "std::max"}

FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.CONVERSION_FUNCTION,
             Kind.FUNCTION_TEMPLATE}
LOOPS_AND_BRANCHES = {Kind.IF_STMT, Kind.WHILE_STMT, Kind.DO_STMT, Kind.FOR_STMT, Kind.CXX_FOR_RANGE_STMT}
INTEGERS = {TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.CHAR16, TypeKind.CHAR32, TypeKind.USHORT, TypeKind.UINT,
            TypeKind.ULONG, TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.WCHAR, TypeKind.SHORT,
            TypeKind.INT, TypeKind.LONG, TypeKind.LONGLONG}
REALS = {TypeKind.FLOAT, TypeKind.DOUBLE, TypeKind.LONGDOUBLE}


def file_offset(location):
    """File and offset of a location; for an argument of a macro, where the argument is written."""
    file, line, column, offset = cindex.c_object_p(), ctypes.c_uint(), ctypes.c_uint(), ctypes.c_uint()
    cindex.conf.lib.clang_getFileLocation(location, ctypes.byref(file), ctypes.byref(line), ctypes.byref(column),
                                          ctypes.byref(offset))
    return (str(cindex.File(file)) if file else None), offset.value


def without_comments(text):
    """On one line, so that a replacement moves no line of the file."""
    pattern = r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'|//[^\n]*|/\*.*?\*/'
    text = re.sub(pattern, lambda match: match[0] if match[0][0] in "\"'" else " ", text, flags=re.S)
    return re.sub(r"\s*\n\s*", " ", text)


def end_of_brackets(text, start):
    """Offset after the bracket that closes the one at `start`; quoted brackets do not count."""
    depth = 0
    for match in re.finditer(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'|[()]', text[start:]):
        depth += {"(": 1, ")": -1}.get(match[0], 0)
        if depth == 0:
            return start + match.end()
    return len(text)


class Finder:
    """The places of one file."""

    def __init__(self, path, text):
        self.path, self.text = path, text
        self.places = {}
        # Neither an assertion nor what a macro makes a constant of; a log statement has mutants of its own.
        self.left_out = [(match.start(), end_of_brackets(text, match.end() - 1))
                         for match in re.finditer(r"\b(?:assert|static_assert|LM_LOG|noexcept|decltype)\s*\(", text)]
        self.left_out += [(match.start(), match.end())
                          for match in re.finditer(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", text, re.M)]

    # What a cursor covers.

    def span(self, cursor):
        (file, start), (end_file, end) = file_offset(cursor.extent.start), file_offset(cursor.extent.end)
        return (start, end) if file == end_file == self.path and start < end else None

    def source(self, cursor):
        span = self.span(cursor)
        return without_comments(self.text[span[0]:span[1]]) if span else ""

    def add(self, span, kind, text, says):
        if any(start < span[1] and span[0] < end and not (span[0] < start and end < span[1])
               for start, end in self.left_out):
            if kind != "statement" or not self.text.startswith("LM_LOG(", span[0]):
                return
        place = self.places.setdefault((*span, kind), Place(*span, kind))
        if all(text != other for other, _ in place.changes):
            place.changes.append((text, says))

    def replace(self, cursor, text, says=None, kind="expression"):
        span = self.span(cursor)
        if span:
            old = self.source(cursor)
            self.add(span, kind, text, f"{old} => {says or text}")

    # The walk.

    def walk(self, cursor, is_condition=False):
        handler = {Kind.VAR_DECL: self.variable, Kind.FIELD_DECL: self.variable, Kind.PARM_DECL: self.variable, Kind.CASE_STMT: self.case,
                   Kind.COMPOUND_STMT: self.compound, Kind.CALL_EXPR: self.call, Kind.RETURN_STMT: self.returned,
                   Kind.BINARY_OPERATOR: self.binary, Kind.COMPOUND_ASSIGNMENT_OPERATOR: self.binary,
                   Kind.UNARY_OPERATOR: self.unary, Kind.CONDITIONAL_OPERATOR: self.branch,
                   Kind.INTEGER_LITERAL: self.integer, Kind.FLOATING_LITERAL: self.real,
                   Kind.CHARACTER_LITERAL: self.character, Kind.STRING_LITERAL: self.string,
                   Kind.CXX_BOOL_LITERAL_EXPR: self.boolean, Kind.DECL_REF_EXPR: self.reference,
                   Kind.INIT_LIST_EXPR: self.list}.get(cursor.kind)
        if cursor.kind in (Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.TYPEDEF_DECL, Kind.TYPE_ALIAS_DECL):
            return
        if cursor.kind in FUNCTIONS:
            self.function(cursor)
        elif cursor.kind in LOOPS_AND_BRANCHES:
            self.branch(cursor)
        elif cursor.kind in (Kind.BINARY_OPERATOR, Kind.CALL_EXPR):
            handler(cursor, is_condition)
        elif handler:
            handler(cursor)
        else:
            for child in cursor.get_children():
                # A cast that is not written, a bracket: the condition is what is inside.
                is_inner = cursor.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR)
                self.walk(child, is_condition and is_inner)

    def walk_all(self, cursors):
        for cursor in cursors:
            self.walk(cursor)

    def function(self, cursor):
        for child in cursor.get_children():
            is_body = child.kind in (Kind.COMPOUND_STMT, Kind.CXX_TRY_STMT, Kind.PARM_DECL)
            if is_body or (cursor.kind == Kind.CONSTRUCTOR and child.kind.is_expression()):
                self.walk(child)

    def variable(self, cursor):
        span = self.span(cursor)
        if not span:
            return
        (_, name) = file_offset(cursor.location)
        before = self.text[span[0]:name]
        if "constexpr" in before or (cursor.semantic_parent.kind in (Kind.CLASS_DECL, Kind.STRUCT_DECL) and
                                     "static" in before):
            return
        # The sizes of an array, and before the name what a template is given, are the compiler's.
        bounds = re.match(r"\w*\s*(\[[^\]]*\])*", self.text[name:])
        for child in cursor.get_children():
            child_span = self.span(child)
            if child_span and child_span[0] >= name + bounds.end():
                self.walk(child)

    def case(self, cursor):
        for child in list(cursor.get_children())[1:]:
            self.walk(child)
            self.statement(child)

    def compound(self, cursor):
        for child in cursor.get_children():
            self.walk(child)
            self.statement(child)

    # Statements.

    def statement(self, cursor):
        span = self.span(cursor)
        if not span:
            return
        if self.text.startswith("LM_LOG(", span[0]):
            self.log_statement(span)
            return
        is_dropped = cursor.kind in (Kind.CONTINUE_STMT, Kind.BREAK_STMT, Kind.CXX_THROW_EXPR) or (
            cursor.kind.is_expression() and self.effect(cursor))
        if cursor.kind == Kind.RETURN_STMT and not list(cursor.get_children()):
            is_dropped = True
        span = self.with_semicolon(span)
        if is_dropped and span:
            self.add(span, "statement", ";", f"{without_comments(self.text[span[0]:span[1]])} => dropped")

    def with_semicolon(self, span):
        match = re.match(r"\s*;", self.text[span[1]:])
        return (span[0], span[1] + match.end()) if match else None

    def effect(self, cursor):
        """Not the `(void)name` that an assertion leaves."""
        while cursor.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR):
            children = list(cursor.get_children())
            if len(children) != 1:
                return True
            cursor = children[0]
        return cursor.kind in (Kind.CALL_EXPR, Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR,
                               Kind.UNARY_OPERATOR, Kind.CXX_THROW_EXPR, Kind.CXX_DELETE_EXPR)

    def log_statement(self, span):
        """Its level and its names are made constants by a macro: the whole statement is replaced."""
        head_end = end_of_brackets(self.text, span[0] + len("LM_LOG"))
        span = self.with_semicolon(span)
        if not span:
            return
        head, rest = self.text[span[0]:head_end], without_comments(self.text[head_end:span[1]])
        self.add(span, "statement", ";", f"{without_comments(head + rest)} => dropped")
        level, names = re.match(r"LM_LOG\((\w+)(.*)", head, re.S).groups()
        other = "kTrace" if level != "kTrace" else "kError"
        self.add(span, "statement", f"LM_LOG({other}{without_comments(names)}{rest}", f"LM_LOG({level}) => LM_LOG({other})")
        name = re.search(r'"((?:\\.|[^"\\])*)"\)$', head)
        if name:
            self.add(span, "statement", without_comments(head[:name.start()]) + '"other")' + rest,
                     f'{name[0][:-1]} => "other"')

    def returned(self, cursor):
        children = list(cursor.get_children())
        self.walk_all(children)
        if not children:
            return
        value = children[0]
        text, type_kind = self.source(value), value.type.get_canonical().kind
        span = self.span(cursor)
        if not text or not span:
            return
        plain = self.unwrapped(value)
        is_mutated = plain.kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR,
                                    Kind.CXX_NULL_PTR_LITERAL_EXPR, Kind.STRING_LITERAL, Kind.INIT_LIST_EXPR)
        if is_mutated or text in ("{}", "*this", "std::nullopt"):
            return
        if type_kind == TypeKind.BOOL:
            if plain.kind not in (Kind.BINARY_OPERATOR, Kind.UNARY_OPERATOR):
                self.replace(value, f"!({text})")
        elif type_kind in INTEGERS or type_kind in REALS:
            if plain.kind not in (Kind.BINARY_OPERATOR, Kind.DECL_REF_EXPR) or not self.places.get((*self.span(value), "expression")):
                self.replace(value, f"lm_mutation::next({text})", f"{text} + 1")
        elif type_kind == TypeKind.POINTER:
            self.replace(value, f"static_cast<decltype({text})>(nullptr)", "nullptr")
        elif type_kind == TypeKind.RECORD:
            span = self.with_semicolon(span)
            if span:
                self.add(span, "statement", "return {};", f"return {text} => return {{}}")

    # Conditions.

    def branch(self, cursor):
        children = list(cursor.get_children())
        span = self.span(cursor)
        condition = self.condition(cursor, children)
        if span and re.match(r"if\s+constexpr", self.text[span[0]:]):
            children = children[1:]
        for child in children:
            is_condition = condition is not None and child == condition
            self.walk(child, is_condition)
            if cursor.kind != Kind.CONDITIONAL_OPERATOR and not is_condition:
                self.statement_of_branch(cursor, child)
        if condition is None or not span:
            return
        if self.unwrapped(condition).kind not in (Kind.CXX_BOOL_LITERAL_EXPR, Kind.INTEGER_LITERAL):
            if cursor.kind not in (Kind.WHILE_STMT, Kind.DO_STMT, Kind.FOR_STMT):
                self.replace(condition, "true", kind="condition")
            self.replace(condition, "false", kind="condition")

    def statement_of_branch(self, cursor, child):
        """A single statement without braces; not what a `for` has in its head."""
        head = re.match(r"(?:for|if|while)\s*(?:constexpr\s*)?\(", self.text[self.span(cursor)[0]:]) if self.span(cursor) else None
        if head:
            end = end_of_brackets(self.text, self.span(cursor)[0] + head.end() - 1)
            span = self.span(child)
            if span and span[0] >= end:
                self.statement(child)

    def condition(self, cursor, children):
        if not self.span(cursor):
            return None
        start = self.span(cursor)[0]
        if re.match(r"if\s+constexpr", self.text[start:]) or cursor.kind == Kind.CXX_FOR_RANGE_STMT:
            return None
        if cursor.kind == Kind.FOR_STMT:
            match = re.match(r"for\s*\(", self.text[start:])
            if not match:
                return None
            first = self.text.index(";", start)
            second = self.text.index(";", first + 1)
            inside = lambda span: span and first < span[0] < second  # noqa: E731
        else:
            inside = lambda span: span is not None  # noqa: E731
        if cursor.kind == Kind.DO_STMT:
            children = children[1:]
        if cursor.kind in (Kind.IF_STMT, Kind.WHILE_STMT) and children and children[0].kind == Kind.VAR_DECL:
            return None
        for child in children:
            if child.kind.is_expression() and inside(self.span(child)):
                return child
        return None

    # Operators.

    def operator_between(self, left, right):
        left, right = self.span(left), self.span(right)
        if not left or not right or left[1] > right[0]:
            return None
        between = without_comments(self.text[left[1]:right[0]]).strip()
        return between if re.fullmatch(r"[-+*/%&|^<>=!]{1,3}", between) else None

    def binary(self, cursor, is_condition=False):
        left, right = list(cursor.get_children())[:2]
        self.walk_all((left, right))
        operator = self.operator_between(left, right)
        if operator:
            self.operator_changes(cursor, left, operator, right, is_condition)

    def operator_changes(self, cursor, left, operator, right, is_condition, table=None):
        a, b = self.source(left), self.source(right)
        if operator in ("&&", "||"):
            self.replace(cursor, f"static_cast<bool>({a})", a)
            self.replace(cursor, f"static_cast<bool>({b})", b)
        if operator in BOUNDARY:
            self.replace(cursor, f"{a} {BOUNDARY[operator]} {b}")
        if operator in OPPOSITE and not is_condition:
            self.replace(cursor, f"{a} {OPPOSITE[operator]} {b}")
        table = table or {**ARITHMETIC, **ASSIGNMENT}
        is_text = "basic_string" in cursor.type.get_canonical().spelling
        if operator in table and not is_text:
            self.replace(cursor, f"{a} {table[operator]} {b}")

    def unary(self, cursor):
        child = list(cursor.get_children())[0]
        self.walk(child)
        text, inner = self.source(cursor), self.source(child)
        if text[:2] in ("++", "--"):
            self.replace(cursor, ("--" if text[0] == "+" else "++") + inner)
        elif text[-2:] in ("++", "--"):
            self.replace(cursor, inner + ("--" if text[-1] == "+" else "++"))
        elif text[:1] in ("-", "!", "~") and inner:
            self.replace(cursor, f"static_cast<bool>({inner})" if text[0] == "!" else inner, inner)

    # Calls.

    def call(self, cursor, is_condition=False):
        children = list(cursor.get_children())
        self.walk_all(children)
        name = cursor.spelling
        if name.startswith("operator") and not name[8:9].isalnum() and len(children) >= 2:
            self.overloaded(cursor, name[8:], children, is_condition)
            return
        arguments = list(cursor.get_arguments())
        self.swaps(cursor, arguments)
        for argument in arguments:
            is_number = argument.type.get_canonical().kind in REALS
            if is_number and self.unwrapped(argument).kind in (Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR, Kind.CALL_EXPR):
                text = self.source(argument)
                self.replace(argument, f"-({text})", f"-{text}")
        callee = children[0] if children else None
        if callee is not None and self.source(callee) in EXTREMES:
            text = self.source(cursor)
            self.replace(cursor, EXTREMES[self.source(callee)] + text[len(self.source(callee)):])

    def overloaded(self, cursor, operator, children, is_condition):
        arguments = list(cursor.get_arguments())
        if len(arguments) == 2:
            found = self.operator_between(*arguments)
            if found == operator and operator in {**OVERLOADED, **OPPOSITE}:
                self.operator_changes(cursor, arguments[0], operator, arguments[1], is_condition, OVERLOADED)
        elif len(arguments) == 1 and operator == "-":
            self.replace(cursor, self.source(arguments[0]))

    def swaps(self, cursor, arguments):
        span = self.span(cursor)
        for first, second in zip(arguments, arguments[1:]):
            a, b = self.span(first), self.span(second)
            if not a or not b or not span or not (span[0] <= a[0] and a[1] <= b[0] and b[1] <= span[1]):
                continue
            alike = self.unwrapped(first).type.get_canonical().spelling.removeprefix("const ") == \
                self.unwrapped(second).type.get_canonical().spelling.removeprefix("const ")
            if not alike or self.source(first) == self.source(second):
                continue
            text = self.text
            swapped = text[span[0]:a[0]] + text[b[0]:b[1]] + text[a[1]:b[0]] + text[a[0]:a[1]] + text[b[1]:span[1]]
            self.replace(cursor, without_comments(swapped))

    def list(self, cursor):
        self.walk_all(cursor.get_children())

    # Constants.

    def unwrapped(self, cursor):
        while cursor.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR):
            children = list(cursor.get_children())
            if len(children) != 1:
                break
            cursor = children[0]
        return cursor

    def integer(self, cursor):
        text = self.source(cursor)
        if not re.fullmatch(r"(?:0[xXbB])?[\da-fA-F']+[uUlL]*", text):
            return
        self.replace(cursor, f"lm_mutation::next({text})", f"{text} + 1")
        if text.strip("uUlL") != "0":
            self.replace(cursor, f"lm_mutation::previous({text})", f"{text} - 1")

    def real(self, cursor):
        text = self.source(cursor)
        if re.fullmatch(r"[\d.eE+-]+[fFlL]?", text):
            is_zero = float(text.rstrip("fFlL")) == 0
            self.replace(cursor, f"lm_mutation::next({text})", "1" if is_zero else f"{text} * 1.125")
            if not is_zero:
                self.replace(cursor, f"-{text}")

    def character(self, cursor):
        text = self.source(cursor)
        if text.endswith("'"):
            self.replace(cursor, f"lm_mutation::next({text})", f"{text} + 1")

    def string(self, cursor):
        match = re.fullmatch(r'(L|u8|u|U|)"(.*)"', self.source(cursor), re.S)
        if match:
            self.replace(cursor, f'{match[1]}"{"" if match[2] else "other"}"')

    def boolean(self, cursor):
        text = self.source(cursor)
        if text in ("true", "false"):
            self.replace(cursor, "false" if text == "true" else "true")

    def reference(self, cursor):
        self.walk_all(cursor.get_children())
        text, target = self.source(cursor), cursor.referenced
        if target is None or not re.fullmatch(r"[\w:]+", text) or not text.endswith(target.spelling or "\0"):
            return
        if target.kind == Kind.ENUM_CONSTANT_DECL:
            self.enumerator(cursor, target, text)
        elif target.kind == Kind.VAR_DECL and re.match(r"k[A-Z]", target.spelling):
            self.constant(cursor, target.type.get_canonical(), text)

    def enumerator(self, cursor, target, text):
        if target.spelling.startswith("memory_order"):
            return  # no run of a test on this machine can see it
        others = [child for child in target.semantic_parent.get_children() if child.kind == Kind.ENUM_CONSTANT_DECL]
        names = [child.spelling for child in others]
        if target.spelling not in names:
            return
        here = names.index(target.spelling)
        for other in others[here + 1:] + others[:here]:
            if other.enum_value != target.enum_value:
                self.replace(cursor, text[:len(text) - len(target.spelling)] + other.spelling)
                return

    def constant(self, cursor, type_, text):
        if type_.kind in INTEGERS:
            self.replace(cursor, f"lm_mutation::next({text})", f"{text} + 1")
        elif type_.kind in REALS:
            self.replace(cursor, f"lm_mutation::next({text})", f"{text} * 1.125")
        elif type_.kind == TypeKind.BOOL:
            self.replace(cursor, f"!{text}")
        elif type_.spelling in ("const char *const", "const char *"):
            self.replace(cursor, '""')
        elif type_.spelling in ("const wchar_t *const", "const wchar_t *"):
            self.replace(cursor, 'L""')
        elif "basic_string_view<char" in type_.spelling:
            self.replace(cursor, "std::string_view()")


def nested(places):
    """Without those that overlap others by halves: a macro has hidden where they end."""
    result, open_ends = [], []
    for place in sorted(places, key=lambda place: (place.start, -place.end, place.kind)):
        while open_ends and open_ends[-1] <= place.start:
            open_ends.pop()
        if open_ends and place.end > open_ends[-1]:
            continue
        open_ends.append(place.end)
        result.append(place)
    return result


def find_mutants(source, arguments, wanted):
    """Places of the files in `wanted` (absolute paths) that the source includes, or is: {path: [place as a dict]}."""
    unit = cindex.Index.create().parse(source, args=arguments)
    errors = [str(item) for item in unit.diagnostics if item.severity >= cindex.Diagnostic.Error]
    if errors:
        raise SystemExit(f"{source}: clang does not parse it: {errors[0]}")
    finders = {}
    for cursor in unit.cursor.get_children():
        path = file_offset(cursor.extent.start)[0]
        if path in wanted:
            if path not in finders:
                with open(path, encoding="latin-1") as file:
                    finders[path] = Finder(path, file.read())
            finders[path].walk(cursor)
    included = {str(include.include) for include in unit.get_includes()} | {source}
    return {path: [asdict(place) for place in nested(finders[path].places.values())] if path in finders else []
            for path in included & set(wanted)}


def line_of(text, offset):
    return text.count("\n", 0, offset) + 1
