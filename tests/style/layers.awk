# Reports every include that the declared order of the folders does not allow, and every include
# cycle. The first file is the declaration; layers.txt explains its format. The others are sources
# and headers, by their path from the project's root. Files in tests/ and bench/ may include
# anything, but nothing else may include them.
#
#   awk -f layers.awk layers.txt FILE...    ends with status 1 when it reports something

function folder_of(path) {
  sub(/\/[^\/]*$/, "", path)
  return path
}

function complain(where, what) {
  printf "%s: %s\n", where, what
  failed = 1
}

# A line of the declaration.
function declare(line,    words, count, folder, other, i) {
  count = split(line, words)
  folder = words[1]
  if (folder !~ /:$/) complain(declaration, "not FOLDER: WHAT IT MAY INCLUDE: " line)
  sub(/:$/, "", folder)
  if (folder in floor) complain(declaration, folder " is declared twice")
  for (i = 2; i <= count; ++i) {
    other = words[i] ~ /\.hpp$/ ? folder_of(words[i]) : words[i]
    if (!(other in floor)) complain(declaration, folder " names " words[i] ", which is not below it")
    allowed[folder, words[i]] = 1
  }
  floor[folder] = FNR
}

# The included file as a path from the project's root; empty for a system header.
function included_path(line) {
  sub(/^[ \t]*#[ \t]*include[ \t]*/, "", line)
  if (line ~ /^<libfreenect2\//) sub(/^</, "\"virtual_kinect/include/", line)
  if (line !~ /^"/) return ""
  line = substr(line, 2)
  sub(/[">].*/, "", line)
  return line
}

function check_include(where, from, path,    to) {
  to = folder_of(path)
  if (path !~ /\// || path ~ /(^|\/)\.\.?\//) {
    complain(where, path " is not a path from the project's root")
  } else if (path ~ /^app\/main\./ || path ~ /\.cpp$/) {
    complain(where, path " must not be included")
  } else if (from != to && !((from, to) in allowed) && !((from, path) in allowed)) {
    complain(where, from " may not include " path)
  }
}

FILENAME == ARGV[1] {
  declaration = FILENAME
  if (!/^[ \t]*(#|$)/) declare($0)
  next
}

FNR == 1 {
  folder = folder_of(FILENAME)
  in_order = FILENAME !~ /^(tests|bench)\//
  if (in_order && !(folder in floor) && !(folder in named)) {
    complain(FILENAME, "the folder " folder " is not declared in " declaration)
    named[folder] = 1
  }
}

/^[ \t]*#[ \t]*include/ {
  path = included_path($0)
  if (path == "") next
  if (in_order) check_include(FILENAME ":" FNR, folder, path)
  includes[FILENAME] = includes[FILENAME] " " path
}

# Depth-first search from `file`; `way` lists the files that led to it.
function follow(file, way,    next_files, count, i) {
  if (state[file] == "done") return
  if (state[file] == "open") {
    complain(file, "include cycle:" substr(way, index(way, " " file)) " " file)
    return
  }
  state[file] = "open"
  count = split(includes[file], next_files)
  for (i = 1; i <= count; ++i) follow(next_files[i], way " " file)
  state[file] = "done"
}

END {
  for (file in includes) follow(file, "")
  exit failed
}
