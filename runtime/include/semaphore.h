/// The part of POSIX semaphores that the module uses: posix_threads.cpp.
#ifndef LM_RUNTIME_SEMAPHORE_H
#define LM_RUNTIME_SEMAPHORE_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct {
  void* lock;
  void* condition;
  unsigned value;
} sem_t;

int sem_init(sem_t* semaphore, int isShared, unsigned value);
int sem_destroy(sem_t* semaphore);
int sem_wait(sem_t* semaphore);
int sem_post(sem_t* semaphore);

#ifdef __cplusplus
}
#endif

#endif
