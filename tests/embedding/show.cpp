bool isRight();

int main() {
  return isRight() ? 0 : 1;
}
