// Measures how long a program takes until its window is complete: arranque SCREEN PROGRAM ARGUMENT…
// SCREEN is the file in which a virtual display keeps its picture (Xvfb -fbdir). Prints the milliseconds from the start
// of the program to the last change of the picture before it stands still, and ends the program.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

using Reloj = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds Quieta(400); // less than a text cursor takes to blink
constexpr milliseconds Paciencia(30'000);

[[noreturn]] void Fallar(const char *que)
{
    std::perror(que);
    std::exit(1);
}

double Medir(const char *imagen, size_t tamano)
{
    std::vector<char> anterior(imagen, imagen + tamano);
    const auto inicio = Reloj::now();
    auto cambio = inicio;
    while (Reloj::now() - inicio < Paciencia && (cambio == inicio || Reloj::now() - cambio < Quieta)) {
        if (std::memcmp(anterior.data(), imagen, tamano) != 0) {
            cambio = Reloj::now();
            std::memcpy(anterior.data(), imagen, tamano);
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
    return std::chrono::duration<double, std::milli>(cambio - inicio).count();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "Use: %s SCREEN PROGRAM ARGUMENT...\n", argv[0]);
        return 2;
    }
    const int archivo = open(argv[1], O_RDONLY | O_CLOEXEC);
    struct stat datos {
    };
    if (archivo < 0 || fstat(archivo, &datos) != 0)
        Fallar(argv[1]);
    const auto tamano = static_cast<size_t>(datos.st_size);
    void *imagen = mmap(nullptr, tamano, PROT_READ, MAP_SHARED, archivo, 0);
    if (imagen == MAP_FAILED)
        Fallar(argv[1]);
    const pid_t hijo = fork();
    if (hijo < 0)
        Fallar("fork");
    if (hijo == 0) {
        execv(argv[2], argv + 2);
        Fallar(argv[2]);
    }
    const double tiempo = Medir(static_cast<const char *>(imagen), tamano);
    kill(hijo, SIGTERM);
    waitpid(hijo, nullptr, 0);
    if (tiempo == 0)
        return 1; // nothing was ever shown
    std::printf("%.1f\n", tiempo);
    return 0;
}
