#!/usr/bin/env python3
"""Lists the functions longer than a limit (80 lines unless told) in the C++ files given.

A function is a brace block opened after a closing parenthesis (optionally followed by
qualifiers, an initializer list or a trailing return type) at namespace or class level. Its length
runs from the line of its signature to its closing brace. Comments and literals are skipped.
Usage: scripts/long-functions.py [--limit N] FILE... ; exits 1 when any function is over.
"""
import re
import sys


def strip(text):
    """The text with comments, strings and characters blanked (newlines kept)."""
    out = []
    i, n = 0, len(text)
    while i < n:
        c = text[i]
        if text.startswith('//', i):
            j = text.find('\n', i)
            j = n if j < 0 else j
            out.append(' ' * (j - i))
            i = j
        elif text.startswith('/*', i):
            j = text.find('*/', i + 2)
            j = n if j < 0 else j + 2
            out.append(re.sub(r'[^\n]', ' ', text[i:j]))
            i = j
        elif text.startswith('R"', i):
            m = re.match(r'R"([^(]*)\(', text[i:])
            end = text.find(')' + m.group(1) + '"', i) + len(m.group(1)) + 2
            out.append(re.sub(r'[^\n]', ' ', text[i:end]))
            i = end
        elif c in '"\'' and not (c == "'" and i > 0 and text[i - 1].isalnum()):
            j = i + 1
            while j < n and text[j] != c:
                j += 2 if text[j] == '\\' else 1
            out.append(c + ' ' * (j - i - 1) + c)
            i = j + 1
        else:
            out.append(c)
            i += 1
    return ''.join(out)


def functions(path):
    text = strip(open(path, encoding='utf-8', errors='replace').read())
    stack = []  # per open brace: (kind, start line)
    line = 1
    last_stmt_end = 0  # index after the last ';', '{' or '}' at this level
    for i, c in enumerate(text):
        if c == '\n':
            line += 1
        elif c == '{':
            head = text[last_stmt_end:i]
            inside_function = any(k == 'function' for k, _ in stack)
            kind = 'block'
            if not inside_function and re.search(r'\)[^()]*$', head) and not re.search(
                    r'\b(namespace|class|struct|enum|union)\b[^()]*$', head) and not re.search(
                    r'=\s*$', head):
                kind = 'function'
            first = last_stmt_end + len(head) - len(head.lstrip())
            stack.append((kind, line - text.count('\n', first, i)))
            last_stmt_end = i + 1
        elif c == '}':
            if stack:
                kind, start = stack.pop()
                if kind == 'function':
                    yield start, line
            last_stmt_end = i + 1
        elif c == ';':
            last_stmt_end = i + 1


def main(argv):
    limit = 80
    if len(argv) > 1 and argv[1] == '--limit':
        limit = int(argv[2])
        argv = argv[2:]
    over = 0
    for path in argv[1:]:
        for start, end in functions(path):
            length = end - start + 1
            if length > limit:
                print(f'{path}:{start}: {length} lines')
                over += 1
    return 1 if over else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv))
