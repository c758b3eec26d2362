# Makes one program of the fenced blocks of a page:
#   ```cpp top  goes to the top of the program as it is
#   ```cpp      becomes a function; they are called in the page's order
#   ```xml      is the text `document` in the functions after it
# Lines keep their place in the page, so that the compiler and assert() name it.

function place() { printf "#line %d \"%s\"\n", FNR + 1, name }

BEGIN {
  print "#undef NDEBUG"  # the blocks' assertions are the test
  print "#include <cassert>"
  print "#include <cstdio>"
  print "#include <string>"
  print "static std::string document;"
}

FNR == 1 { name = FILENAME; sub(/.*\//, "", name) }

/^```/ && !inside {
  inside = substr($0, 4)
  if (inside == "cpp") {
    ++blocks
    printf "static void block%d() {\n", blocks
    if (documents) printf "document = document%d;\n", documents
    place()
  } else if (inside == "cpp top") {
    place()
  } else if (inside == "xml") {
    ++documents
    printf "static const char document%d[] = R\"xml(", documents
  }
  next
}

/^```$/ {
  if (inside == "cpp") print "}"
  if (inside == "xml") print ")xml\";"
  inside = ""
  next
}

inside == "cpp" || inside == "cpp top" || inside == "xml" {
  print
}

END {
  if (inside) { print "#error a block is not closed" }
  print "int main() {"
  for (i = 1; i <= blocks; ++i) printf "  block%d();\n", i
  printf "  std::printf(\"%d blocks of the guide ran\\n\");\n}\n", blocks
}
