// Measures how long the host takes until its window is complete, beside an empty window:
// arranque SCREEN ROUNDS EMPTY PROGRAM ARGUMENT…
// SCREEN is the file in which a virtual display keeps its picture (Xvfb -fbdir). A time is from the start of a program
// to the last change of the picture before it stands still; then the program is ended. Prints a line like those of
// medir, with the medians.

#include <algorithm>
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

// Milliseconds.
double Medir(const char *imagen, size_t tamano, char *const *orden)
{
    std::vector<char> anterior(imagen, imagen + tamano);
    const pid_t hijo = fork();
    if (hijo < 0)
        Fallar("fork");
    if (hijo == 0) {
        execv(orden[0], orden);
        Fallar(orden[0]);
    }
    const auto inicio = Reloj::now();
    auto cambio = inicio;
    while (Reloj::now() - inicio < Paciencia && (cambio == inicio || Reloj::now() - cambio < Quieta)) {
        if (std::memcmp(anterior.data(), imagen, tamano) != 0) {
            cambio = Reloj::now();
            std::memcpy(anterior.data(), imagen, tamano);
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
    kill(hijo, SIGTERM);
    waitpid(hijo, nullptr, 0);
    std::this_thread::sleep_for(Quieta); // until its window is gone from the picture
    if (cambio == inicio) {
        std::fprintf(stderr, "%s: nothing was ever shown\n", orden[0]);
        std::exit(1);
    }
    return std::chrono::duration<double, std::milli>(cambio - inicio).count();
}

double Mediana(std::vector<double> tiempos)
{
    std::sort(tiempos.begin(), tiempos.end());
    return tiempos[tiempos.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    const int rondas = argc < 5 ? 0 : std::atoi(argv[2]);
    if (rondas < 1) {
        std::fprintf(stderr, "Use: %s SCREEN ROUNDS EMPTY PROGRAM ARGUMENT...\n", argv[0]);
        return 2;
    }
    const int archivo = open(argv[1], O_RDONLY | O_CLOEXEC);
    struct stat datos {
    };
    if (archivo < 0 || fstat(archivo, &datos) != 0)
        Fallar(argv[1]);
    const auto tamano = static_cast<size_t>(datos.st_size);
    void *memoria = mmap(nullptr, tamano, PROT_READ, MAP_SHARED, archivo, 0);
    if (memoria == MAP_FAILED)
        Fallar(argv[1]);
    const auto *imagen = static_cast<const char *>(memoria);
    char *const vacia[] = {argv[3], nullptr};
    std::vector<double> vacias;
    std::vector<double> llenas;
    Medir(imagen, tamano, argv + 4); // warms up
    for (int i = 0; i < rondas; ++i) {
        vacias.push_back(Medir(imagen, tamano, vacia));
        llenas.push_back(Medir(imagen, tamano, argv + 4));
    }
    std::printf("arranque\t%.1f\t%.1f\t2\t\n", Mediana(llenas), Mediana(vacias));
    return 0;
}
