// ZelEngine script

void Update() {
}
