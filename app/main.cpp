// main: the command-line tool nmk.

int main() { return 0; }
