int own() {
  return 1;
}
