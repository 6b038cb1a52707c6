"""Finds what can be changed in a source, by clang's view of it."""
import re

from clang.cindex import CursorKind as Kind, TypeKind

from mutants import Edit, Mutant, one_line

INTEGERS = {TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.CHAR16, TypeKind.CHAR32, TypeKind.USHORT, TypeKind.UINT, TypeKind.ULONG,
            TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.WCHAR, TypeKind.SHORT, TypeKind.INT, TypeKind.LONG,
            TypeKind.LONGLONG}
NUMBERS = INTEGERS | {TypeKind.FLOAT, TypeKind.DOUBLE}
FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.CONVERSION_FUNCTION,
             Kind.FUNCTION_TEMPLATE}
# What has to be known when compiling.
FIXED = {Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.ALIGNED_ATTR}
OTHER_COMPARISONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",)}
OTHER_ASSIGNMENTS = {"+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|="}
SYMMETRIC = {"min", "max", "clamp", "swap"}  # Their (first) arguments may stand either way.
SYMMETRIC_LIST = re.compile(rb"\b(min|max)\(\s*\Z")
UNSEEN = {"reserve"}  # Only makes what follows quicker.
STRING = re.compile(rb'(u8|u|U|L)?"((?:\\.|[^"\\])*)"(_\w+|s|sv)?\Z')
INTEGER = re.compile(rb"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)([uUlLzZ]*)\Z")
FLOATING = re.compile(rb"([0-9][0-9']*\.?[0-9']*(?:[eE][-+]?[0-9]+)?|\.[0-9]+)([fFlL]?)\Z")
CHARACTER = re.compile(rb"(u8|u|U|L)?'(.|\\.)'\Z", re.DOTALL)
NAME_AT_END = re.compile(rb"\w+\Z")


class Sites:
    """Collects the mutants of one file from one translation unit that has it."""

    def __init__(self, path, source, macros):
        self.path = path
        self.source = source
        self.macros = macros  # [(start, end, name)], the macros that are used in the file.
        self.found = {}  # A mutant: None, in the order of the file.
        self.constexpr_at = {}
        self.conditions = []
        self.in_constant = None
        self.at_compile_time = False
        self.function = ""
        self.statements = set()  # The ranges of those that were met.

    # Helpers

    def range_of(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def text(self, start, end):
        return self.source[start:end]

    def is_written(self, start, end):
        """Whether the bytes are what the compiler sees: no part of a macro's use, though one may lie inside."""
        return start < end and not any(begin < end and start < stop and not (start <= begin and stop <= end)
                                       for begin, stop, _ in self.macros)

    def add(self, kind, *edits, as_bool=False):
        for edit in edits:
            if edit.how != "insert" and not self.is_written(edit.start, edit.end):
                return
            if edit.how == "choose" and self.text(edit.start, edit.end).startswith(b"{"):
                return
        mutant = Mutant(self.path, self.function, kind, tuple(edits), as_bool, self.at_compile_time, self.in_constant)
        self.found.setdefault(mutant)

    def change(self, kind, start, end, text, as_bool=False):
        """The expression is `text` (bytes) instead."""
        text = one_line(text).decode()
        if text != one_line(self.text(start, end)).decode():
            self.add(kind, Edit(start, end, "choose", text), as_bool=as_bool)

    # Walking

    def walk(self, cursor, parent=None):
        kind = cursor.kind
        if kind in FIXED:
            return
        start, end = self.range_of(cursor)
        if self.is_unseen(cursor):
            return
        kept = self.in_constant, self.at_compile_time, self.function
        if kind == Kind.VAR_DECL:
            self.enter_variable(cursor, start, end)
        elif kind == Kind.LAMBDA_EXPR:
            self.in_constant = None
        elif kind in FUNCTIONS:
            self.function = cursor.spelling
            self.enter_function(cursor, start)
        elif kind in (Kind.FIELD_DECL, Kind.PARM_DECL):
            self.at_compile_time = True
        if kind == Kind.COMPOUND_STMT or kind == Kind.DEFAULT_STMT or kind == Kind.CASE_STMT:
            in_switch = kind != Kind.COMPOUND_STMT or parent is not None and parent.kind == Kind.SWITCH_STMT
            for child in cursor.get_children():
                self.statement(child, parent, in_switch)
        self.expression(cursor, parent, start, end)
        children = list(cursor.get_children())
        if kind == Kind.CASE_STMT:
            children = children[1:]
        for child in children:
            self.walk(child, cursor)
        self.in_constant, self.at_compile_time, self.function = kept

    @staticmethod
    def is_unseen(cursor):
        """Whether it is a statement that only makes what follows quicker."""
        while cursor is not None and cursor.kind == Kind.UNEXPOSED_EXPR:
            cursor = next(iter(cursor.get_children()), None)
        return cursor is not None and cursor.kind == Kind.CALL_EXPR and cursor.spelling in UNSEEN \
            and cursor.type.kind == TypeKind.VOID

    def enter_variable(self, cursor, start, end):
        """Constants of the language become constants of the run, so that a mutant of them can be chosen."""
        name = cursor.location.offset
        word = re.search(rb"\bconstexpr\b", self.text(start, name)) if start < name else None
        if not word:
            return
        at = start + word.start()
        in_class = cursor.semantic_parent.kind in (Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE)
        if re.match(rb"\s*const\b", self.source[at + 9:]):
            instead = b"inline" if in_class else b""
        else:
            instead = b"inline const" if in_class else b"const"
        self.in_constant = (start, end)
        self.constexpr_at[start, end] = (at, at + 9, instead)
        self.at_compile_time = False

    def enter_function(self, cursor, start):
        body = next((child for child in cursor.get_children() if child.kind == Kind.COMPOUND_STMT), None)
        if body is None:
            return
        opening = body.extent.start.offset
        self.in_constant = None
        self.at_compile_time = re.search(rb"\bconstexpr\b", self.text(start, opening)) is not None
        if self.is_written(opening, opening + 1):
            self.early_return(cursor, body, opening + 1)

    def early_return(self, function, body, at):
        if not list(body.get_children()):
            return
        if function.kind in (Kind.CONSTRUCTOR, Kind.DESTRUCTOR):
            returns = ("return;",)
        else:
            result = function.result_type.get_canonical()
            if result.kind == TypeKind.VOID:
                returns = ("return;",)
            elif result.kind == TypeKind.BOOL:
                returns = ("return true;", "return false;")
            elif result.kind in (TypeKind.LVALUEREFERENCE, TypeKind.RVALUEREFERENCE) or "auto" in function.result_type.spelling:
                return
            else:
                returns = ("return {};",)
        only = one_line(self.text(at, body.extent.end.offset - 1)).decode()
        for text in returns:
            if text != only:
                self.add("early return", Edit(at, at, "insert", text))

    def statement(self, cursor, parent, in_switch):
        """Left out, where it gives nothing that another one needs to be compiled."""
        kind = cursor.kind
        start, end = self.range_of(cursor)
        self.statements.add((start, end))
        is_jump = kind in (Kind.BREAK_STMT, Kind.CONTINUE_STMT)
        is_return = kind == Kind.RETURN_STMT and (parent is not None and parent.kind == Kind.IF_STMT
                                                  or not list(cursor.get_children()))
        if not (is_jump or is_return or kind.is_expression()) or self.is_unseen(cursor):
            return
        after = re.compile(rb"\s*;").match(self.source, end)
        # Without the break that ends it, a switch ends as well.
        if after and not (in_switch and kind == Kind.BREAK_STMT and self.source[after.end():].lstrip().startswith(b"}")):
            self.add("statement removed", Edit(start, after.end(), "remove"))

    # Expressions

    def expression(self, cursor, parent, start, end):
        kind = cursor.kind
        if kind == Kind.BINARY_OPERATOR or kind == Kind.COMPOUND_ASSIGNMENT_OPERATOR:
            operands = list(cursor.get_children())
            if len(operands) == 2:
                self.operator(*operands, start, end)
        elif kind == Kind.CALL_EXPR and cursor.spelling.startswith("operator"):
            arguments = list(cursor.get_arguments())
            if len(arguments) == 2:
                self.operator(*arguments, start, end)
        elif kind == Kind.CALL_EXPR and cursor.spelling not in SYMMETRIC:
            self.swap_neighbours([argument for argument in cursor.get_arguments() if argument is not None])
        elif kind == Kind.INIT_LIST_EXPR and not SYMMETRIC_LIST.search(self.source, 0, start):
            self.swap_neighbours(list(cursor.get_children()))
        elif kind == Kind.UNARY_OPERATOR:
            self.sign(cursor, start, end)
        elif kind == Kind.DECL_REF_EXPR:
            self.other_enumerator(cursor, start, end)
        elif kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.change("constant", start, end, b"false" if self.text(start, end) == b"true" else b"true")
        elif kind == Kind.INTEGER_LITERAL:
            self.integer(parent, start, end)
        elif kind == Kind.FLOATING_LITERAL:
            self.floating(start, end)
        elif kind == Kind.CHARACTER_LITERAL:
            self.character(start, end)
        elif kind == Kind.STRING_LITERAL:
            self.string(start, end, self.text(start, end))
        self.negation(cursor, parent, start, end)

    def operator(self, left, right, start, end):
        (left_start, left_end), (right_start, right_end) = self.range_of(left), self.range_of(right)
        if not (start <= left_start < left_end <= right_start < right_end <= end):
            return
        between = one_line(self.text(left_end, right_start)).strip(b"() ").decode()
        before, after = self.text(start, left_end), self.text(right_start, end)
        lhs, rhs = self.text(left_start, left_end), self.text(right_start, right_end)

        def other(name, kind):
            self.change(kind, start, end, before + b" " + name.encode() + b" " + after)

        types = [side.type.get_canonical() for side in (left, right)]
        numbers = all(one.kind in NUMBERS for one in types)
        is_place = any(one.kind == TypeKind.POINTER or "iterator" in one.spelling for one in types)
        if between in ("&&", "||"):
            self.change("condition weakened", start, end, lhs, as_bool=True)
            self.change("condition weakened", start, end, rhs, as_bool=True)
        elif between in OTHER_COMPARISONS:
            names = OTHER_COMPARISONS[between]
            other(names[-1], "condition negated")
            if len(names) == 2:
                other(names[0], "border")
        elif between in OTHER_ASSIGNMENTS and numbers:
            other(OTHER_ASSIGNMENTS[between], "operator")
        elif between in ("-", "/", "%", "+"):
            if between == "+" and numbers:
                other("-", "operator")
            elif between != "+" or not is_place:  # A pointer and its like stand on either side of a sum.
                self.change("operands swapped", start, end, b"(" + rhs + b") " + between.encode() + b" (" + lhs + b")")
        elif between == "*" and numbers:
            other("/", "operator")
        elif between in ("&", "|") and numbers:
            other("|" if between == "&" else "&", "operator")

    def swap_neighbours(self, arguments):
        for one, following in zip(arguments, arguments[1:]):
            if one.type.get_canonical().spelling != following.type.get_canonical().spelling:
                continue
            (start, end), (next_start, next_end) = self.range_of(one), self.range_of(following)
            texts = self.text(start, end), self.text(next_start, next_end)
            if end <= next_start and one_line(texts[0]) != one_line(texts[1]):
                self.add("operands swapped", Edit(start, end, "choose", one_line(texts[1]).decode()),
                         Edit(next_start, next_end, "choose", one_line(texts[0]).decode()))

    def sign(self, cursor, start, end):
        text = self.text(start, end)
        if text.startswith(b"-") and not text.startswith(b"--"):
            self.change("operator", start, end, text[1:])
        elif text.startswith(b"!"):
            self.change("condition negated", start, end, text[1:], as_bool=True)

    def negation(self, cursor, parent, start, end):
        """Of conditions that are no comparison: calls, variables, and what is converted to bool."""
        if not cursor.kind.is_expression() or cursor.type.get_canonical().kind != TypeKind.BOOL or parent is None:
            return
        if (start, end) in self.statements or parent.kind == Kind.CXX_BOOL_LITERAL_EXPR:
            return
        if parent.kind == Kind.CSTYLE_CAST_EXPR:  # To void: what it gives is for nobody.
            return
        if parent.kind == Kind.UNARY_OPERATOR or self.source[:start].rstrip(b"( ").endswith(b"!"):
            return
        if cursor.kind == Kind.CALL_EXPR:
            operands = list(cursor.get_arguments())
            if cursor.spelling.startswith("operator") and (len(operands) == 2 or cursor.spelling == "operator!"):
                return
        elif cursor.kind == Kind.UNEXPOSED_EXPR:
            inner = next(iter(cursor.get_children()), None)
            if inner is None or self.range_of(inner) != (start, end):
                return
            is_bool = inner.type.get_canonical().kind == TypeKind.BOOL
            if is_bool and inner.kind not in (Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR):
                return
        else:
            return
        self.change("condition negated", start, end, b"!(" + self.text(start, end) + b")", as_bool=True)

    def other_enumerator(self, cursor, start, end):
        enumerator = cursor.referenced
        if enumerator is None or enumerator.kind != Kind.ENUM_CONSTANT_DECL:
            return
        names = [child.spelling for child in enumerator.semantic_parent.get_children()
                 if child.kind == Kind.ENUM_CONSTANT_DECL]
        text = self.text(start, end)
        if len(names) > 1 and text.endswith(enumerator.spelling.encode()):
            following = names[(names.index(enumerator.spelling) + 1) % len(names)]
            self.change("enumerator", start, end, NAME_AT_END.sub(following.encode(), text))

    def integer(self, parent, start, end):
        match = INTEGER.match(self.text(start, end))
        if not match:
            return
        # What belongs to a type, such as the size of an array, is for the compiler.
        declares = parent is not None and parent.kind in (Kind.VAR_DECL, Kind.FIELD_DECL, Kind.PARM_DECL)
        if declares and (start < parent.location.offset or self.source[end:].lstrip().startswith(b"]")):
            return
        digits = match.group(1).replace(b"'", b"").decode()
        octal = len(digits) > 1 and digits.startswith("0") and digits.isdigit()
        value = int(digits, 8 if octal else 0)
        for other in (value + 1, value - 1):
            if other >= 0:
                text = hex(other) if digits[:2].lower() == "0x" else "0" + format(other, "o") if octal else str(other)
                self.change("constant", start, end, text.encode() + match.group(2))

    def floating(self, start, end):
        match = FLOATING.match(self.text(start, end))
        if match:
            value = float(match.group(1).replace(b"'", b""))
            other = 1.0 if value == 0 else value * 1.1
            self.change("constant", start, end, repr(other).encode() + match.group(2))

    def character(self, start, end):
        match = CHARACTER.match(self.text(start, end))
        if match:
            other = b"X" if match.group(2).startswith(b"\\") else bytes([match.group(2)[0] + 1])
            other = b"#" if other in (b"'", b"\\") else other
            self.change("constant", start, end, (match.group(1) or b"") + b"'" + other + b"'")

    def string(self, start, end, text, before=b"", after=b""):
        match = STRING.match(text)
        if not match:
            return
        prefix, characters, suffix = (part or b"" for part in match.groups())
        shorter = re.sub(rb"(\\[uU][0-9A-Fa-f]{4,8}|\\x[0-9A-Fa-f]+|\\[0-7]{1,3}|\\.|.)\Z", b"", characters, flags=re.DOTALL)
        for other in {b"": [b"x"]}.get(characters, sorted({b"", shorter})):
            self.change("constant", start, end, before + prefix + b'"' + other + b'"' + suffix + after)

    def strings_of_macros(self):
        """What QStringLiteral makes strings of."""
        for start, end, name in self.macros:
            text = self.text(start, end)
            if name == "QStringLiteral" and text.endswith(b")"):
                begin = text.index(b"(") + 1
                nested = [use for use in self.macros if use[0] < end and start < use[1] and use[:2] != (start, end)]
                if not nested:
                    self.string(start, end, text[begin:-1].strip(), text[:begin], b")")
