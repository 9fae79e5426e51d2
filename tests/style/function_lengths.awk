# Reports every function that is too long: over 60 lines, or over 40 in dashboard/, which draws.
# Covers free functions, methods inside classes and test bodies, from the first line of the
# declaration to the closing brace; a lambda counts as part of the function around it.
# Relies on one point of clang-format's layout: there is no space before the brace of a member's
# initializer, and there is one before the brace of a function's body.
#
#   awk -f function_lengths.awk FILE...    ends with status 1 when a function is too long

FNR == 1 {
  limit = FILENAME ~ /^dashboard\// ? 40 : 60
  depth = function_depth = parentheses = in_comment = in_directive = 0
  raw_end = ""
  begin_statement()
}

function begin_statement() {
  statement = ""
  start = 0
  parentheses = 0
}

# The line without comments, strings and character literals, whose braces do not count.
function bare_code(line,    bare, at) {
  bare = ""
  while (line != "") {
    if (in_comment || raw_end != "") {
      at = index(line, in_comment ? "*/" : raw_end)
      if (!at) return bare
      line = substr(line, at + (in_comment ? 2 : length(raw_end)))
      in_comment = 0
      raw_end = ""
    } else if (match(line, /^R"[^(]*\(/)) {
      raw_end = ")" substr(line, 3, RLENGTH - 3) "\""
      line = substr(line, RLENGTH + 1)
    } else if (match(line, /^"([^"\\]|\\.)*"/) || match(line, /^'([^'\\]|\\.)[^']*'/)) {
      bare = bare "0"
      line = substr(line, RLENGTH + 1)
    } else if (match(line, /^[A-Za-z0-9_]('?[A-Za-z0-9_])*/)) {
      at = RLENGTH
      if (substr(line, 1, at + 1) ~ /^(u8|u|U|L)?R"$/) at = at - 1
      if (at > 0) bare = bare substr(line, 1, at)
      line = substr(line, at + 1)
    } else if (line ~ /^\/\//) {
      return bare
    } else if (line ~ /^\/\*/) {
      in_comment = 1
      line = substr(line, 3)
    } else {
      bare = bare substr(line, 1, 1)
      line = substr(line, 2)
    }
  }
  return bare
}

# Whether the brace after `statement` opens the body of a function.
function opens_function() {
  if (statement !~ /\(/ || statement ~ /[=,(]$/) return 0
  return statement !~ /^[ ]*(template *<.*> *)?(namespace|struct|class|enum|union) /
}

function close_function(    lines) {
  lines = FNR - function_start + 1
  gsub(/ +/, " ", function_name)
  if (lines > limit) {
    printf "%s:%d: %d lines, %d allowed: %s\n", FILENAME, function_start, lines, limit,
        function_name
    failed = 1
  }
  function_depth = 0
}

# Reads one character outside of any function.
function read_outside(character, before) {
  if (character == "(") ++parentheses
  if (character == ")") --parentheses
  if (character == "{") {
    ++depth
    if (parentheses > 0 || before ~ /[A-Za-z0-9_>]/) {
      initializer[depth] = 1
    } else {
      initializer[depth] = 0
      sub(/ +$/, "", statement)
      if (opens_function()) {
        function_depth = depth
        function_start = start
        function_name = statement
      }
      begin_statement()
      return
    }
  }
  if (character == "}") {
    if (!initializer[depth--]) {
      begin_statement()
      return
    }
  }
  if (character == ";" && parentheses <= 0) {
    begin_statement()
    return
  }
  if (!start && character !~ /[ \t]/) start = FNR
  if (start) statement = statement character
}

# A preprocessor directive with its continuation lines.
in_directive || /^[ \t]*#/ {
  in_directive = /\\$/
  if (raw_end == "" && !in_comment) next
}

{
  code = bare_code($0)
  sub(/^[ \t]*(public|private|protected):/, "", code)
  if (statement != "") statement = statement " "
  before = " "
  for (i = 1; i <= length(code); ++i) {
    character = substr(code, i, 1)
    if (!function_depth) {
      read_outside(character, before)
    } else if (character == "{") {
      ++depth
    } else if (character == "}" && depth-- == function_depth) {
      close_function()
      begin_statement()
    }
    before = character
  }
}

END { exit failed }
