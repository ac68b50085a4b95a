// ZelEngine PlayerController

float moveSpeed = 4.0f;

void Update() {
    // W/S/A/D pohyb je zatim spousten enginem podle nazvu PlayerController.
}
